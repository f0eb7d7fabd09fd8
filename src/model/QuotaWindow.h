// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <algorithm>

namespace burnwick {

/// Whether two reset instants belong to the same 5-hour window. The service computes the instant for each
/// response, with variations of up to two seconds; the next window resets hours later. Always compare with
/// the window's first known instant, so that variations do not add up.
[[nodiscard]] constexpr bool isSameQuotaWindow(Instant resetAt, Instant other) noexcept {
    constexpr std::chrono::nanoseconds tolerance = std::chrono::seconds(60);
    return nanosecondsBetween(std::min(resetAt, other), std::max(resetAt, other)) <=
           static_cast<std::uint64_t>(tolerance.count());
}

} // namespace burnwick
