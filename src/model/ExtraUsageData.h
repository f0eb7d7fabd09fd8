// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace burnwick {

/// The account's paid extra usage. Amounts are dollars.
struct ExtraUsageData {
    double dailySpend = 0; ///< spent since the month began, whatever the name says
    double monthlyLimit = 0;
    double currentBalance = 0; ///< what is left of the limit, never negative
    double dailySpendPct = 0;  ///< spend in percent of the limit
    std::int64_t daysUntilReset = 0;

    bool operator==(const ExtraUsageData &) const = default;
};

} // namespace burnwick
