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

/// The usage of one model.
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
    std::int64_t currentStreak = 0; ///< consecutive active days up to today or yesterday
    std::int64_t longestStreak = 0;
    std::optional<std::int64_t> peakHour;           ///< 0 to 23: the earliest hour with the most entries
    std::optional<std::string> favoriteModel;       ///< with the most dated entries; first in byte order
    std::map<LocalDay, std::int64_t> dailyActivity; ///< tokens of all kinds on each active day
    std::vector<ModelStat> modelStats;              ///< sorted by share, then by name

    bool operator==(const HistoricalData &) const = default;
};

} // namespace burnwick
