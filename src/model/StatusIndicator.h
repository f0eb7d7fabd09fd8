// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/QuotaData.h"

#include <optional>

namespace burnwick {

/// How close the usage of the 5-hour window is to its limit.
enum class StatusIndicator { green, orange, red };

/// Green below 41 %, orange from 41 %, red from 81 %.
[[nodiscard]] constexpr StatusIndicator statusIndicatorForUsage(double usagePct) noexcept {
    if (usagePct >= 81)
        return StatusIndicator::red;
    return usagePct >= 41 ? StatusIndicator::orange : StatusIndicator::green;
}

/// For the 5-hour window; green when `quota` is null.
[[nodiscard]] inline StatusIndicator statusIndicatorFor(const std::optional<QuotaData> &quota) noexcept {
    return quota ? statusIndicatorForUsage(quota->fiveHourUsagePct) : StatusIndicator::green;
}

} // namespace burnwick
