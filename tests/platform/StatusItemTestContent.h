// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"

#include <optional>

namespace burnwick {

/// A title of 1.2M tokens and $4.50 at the given quota, with the dot that belongs to it.
[[nodiscard]] inline StatusItemContent contentAt(std::optional<double> usedPct) {
    std::optional<QuotaData> quota;
    if (usedPct) {
        quota.emplace();
        quota->fiveHourUsagePct = *usedPct;
    }
    const StatusIndicator indicator = statusIndicatorFor(quota);
    return {buildStatusTitle({1'234'567, 0, 0, 0}, 4.5, quota, indicator), usedPct, indicator};
}

} // namespace burnwick
