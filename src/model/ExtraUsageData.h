// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>

namespace burnwick {

/// The account's paid extra usage. Amounts are dollars.
struct ExtraUsageData {
    double dailySpend = 0; ///< spent this month, not only today
    double monthlyLimit = 0;
    double currentBalance = 0; ///< the unspent part of the limit, at least 0
    double dailySpendPct = 0;  ///< spend in percent of the limit
    std::int64_t daysUntilReset = 0;

    bool operator==(const ExtraUsageData &) const = default;
};

} // namespace burnwick
