// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <optional>
#include <string_view>

namespace burnwick {

/// The model of the scoped limit whose figures QuotaData has.
inline constexpr std::string_view claudeDesign = "Claude Design";

/// One snapshot of the account's rate-limit windows. Percentages run from 0 to 100 and may exceed 100.
struct QuotaData {
    double fiveHourUsagePct = 0;
    double sevenDayUsagePct = 0;
    double claudeDesignWeeklyPct = 0;
    std::optional<Instant> fiveHourResetAt;
    std::optional<Instant> sevenDayResetAt;
    std::optional<Instant> claudeDesignResetAt;

    bool operator==(const QuotaData &) const = default;
};

} // namespace burnwick
