// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <cstdint>

namespace burnwick {

/// An absolute point in time, UTC, nanoseconds since 1970-01-01 (representable years: 1678 to 2261).
using Instant = std::chrono::sys_time<std::chrono::nanoseconds>;

/// Returns the nanoseconds between two instants; their difference as a duration could overflow.
[[nodiscard]] constexpr std::uint64_t nanosecondsBetween(Instant earlier, Instant later) noexcept {
    return static_cast<std::uint64_t>(later.time_since_epoch().count()) -
           static_cast<std::uint64_t>(earlier.time_since_epoch().count());
}

/// A civil day of the user's calendar, independent of any time zone: days since 1970-01-01.
using LocalDay = std::chrono::local_days;

} // namespace burnwick
