// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <algorithm>

namespace burnwick {

/// Whether both are the reset instant of one 5-hour window. The service computes it anew for each answer, and
/// it wobbles by up to two seconds; the next window's is hours later. Compare with the first one known of a
/// window, which does not wander.
[[nodiscard]] constexpr bool isSameQuotaWindow(Instant resetAt, Instant other) noexcept {
    constexpr std::chrono::nanoseconds tolerance = std::chrono::seconds(60);
    return nanosecondsBetween(std::min(resetAt, other), std::max(resetAt, other)) <=
           static_cast<std::uint64_t>(tolerance.count());
}

} // namespace burnwick
