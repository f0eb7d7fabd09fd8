// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "model/Calendar.h"
#include "model/Instant.h"
#include "model/SessionTokens.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>
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

/// Sums entries up, one at a time and in any order. For one thread; ends the program when a sum overflows.
class HistoryBuilder {
public:
    explicit HistoryBuilder(const Calendar &calendar)
        : m_cursor(calendar) {}

    void add(const JSONLEntry &entry);

    /// The history of what was added; `today` is where the current streak ends.
    [[nodiscard]] HistoricalData finish(std::int64_t sessionCount, LocalDay today) const;

private:
    struct ModelSums {
        std::int64_t datedEntries = 0;
        std::int64_t input = 0;
        std::int64_t output = 0;
    };

    ModelSums &sumsOf(InternedString model);
    std::int64_t &tokensOn(LocalDay day);

    Calendar::Cursor m_cursor;
    std::int64_t m_messageCount = 0;
    SessionTokens m_totalTokens;
    std::map<LocalDay, std::int64_t> m_days;
    std::array<std::int64_t, 24> m_entriesPerHour{};
    std::unordered_map<InternedString, ModelSums> m_models;
    // Entries come in long runs of one day and one model.
    std::map<LocalDay, std::int64_t>::iterator m_lastDay = m_days.end();
    InternedString m_lastModel;
    ModelSums *m_lastSums = nullptr;
};

/// Adds an entry's counts to the sums; ends the program when one overflows.
void addCounts(SessionTokens &sums, const JSONLEntry::Counts &counts);

} // namespace burnwick
