// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>

namespace burnwick {

/// An absolute point in time, UTC, nanoseconds since 1970-01-01 (representable years: 1678 to 2261).
using Instant = std::chrono::sys_time<std::chrono::nanoseconds>;

/// A civil day of the user's calendar, independent of any time zone: days since 1970-01-01.
using LocalDay = std::chrono::local_days;

} // namespace burnwick
