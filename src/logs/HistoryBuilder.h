// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "model/HistoricalData.h"

#include <array>
#include <cstdint>
#include <map>
#include <unordered_map>

namespace burnwick {

/// Sums entries in any order. For one thread; ends the program when a sum overflows.
class HistoryBuilder {
public:
    explicit HistoryBuilder(const Calendar &calendar)
        : m_cursor(calendar) {}

    HistoryBuilder(const HistoryBuilder &) = delete;
    HistoryBuilder &operator=(const HistoryBuilder &) = delete;

    /// Adds an entry; without `isMessage` only its tokens.
    void add(const JSONLEntry &entry, bool isMessage = true);
    /// Adds all entries of the other builder, which has the same calendar.
    void add(const HistoryBuilder &other);

    /// Returns the history of the entries added; the current streak ends on `today`.
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
void addCounts(SessionTokens &sums, const SessionTokens &counts);

} // namespace burnwick
