// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/SessionTokens.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace burnwick {

/// One model's part in a history.
struct ModelStat {
    std::string name; ///< as logged
    std::int64_t inputTokens = 0;
    std::int64_t outputTokens = 0;
    double percentage = 0; ///< share of input and output tokens, 0 to 100

    bool operator==(const ModelStat &) const = default;
};

/// A history of the use of Claude Code.
struct HistoricalData {
    std::int64_t sessionCount = 0;
    std::int64_t messageCount = 0;
    SessionTokens totalTokens;
    std::int64_t activeDays = 0;    ///< days with a dated entry
    std::int64_t currentStreak = 0; ///< active days in a row up to today, or up to yesterday
    std::int64_t longestStreak = 0;
    std::optional<std::int64_t> peakHour;           ///< 0 to 23, by entries; of equals the earliest
    std::optional<std::string> favoriteModel;       ///< by dated entries; of equals the bytewise smallest
    std::map<LocalDay, std::int64_t> dailyActivity; ///< tokens of all kinds on each active day
    std::vector<ModelStat> modelStats;              ///< by share, then by name

    bool operator==(const HistoricalData &) const = default;
};

} // namespace burnwick
