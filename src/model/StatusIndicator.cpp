// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/StatusIndicator.h"

namespace burnwick {

StatusIndicator statusIndicatorForUsage(double usagePct) noexcept {
    constexpr double redFromPct = 81.0;
    constexpr double orangeFromPct = 41.0;
    if (usagePct >= redFromPct)
        return StatusIndicator::red;
    if (usagePct >= orangeFromPct)
        return StatusIndicator::orange;
    return StatusIndicator::green;
}

StatusIndicator statusIndicatorFor(const std::optional<QuotaData> &quota) noexcept {
    return quota ? statusIndicatorForUsage(quota->fiveHourUsagePct) : StatusIndicator::green;
}

} // namespace burnwick
