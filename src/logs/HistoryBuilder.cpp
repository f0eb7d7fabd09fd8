// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/HistoryBuilder.h"

#include <algorithm>

namespace burnwick {

namespace {

using std::chrono::days;
using DailyActivity = std::map<LocalDay, std::int64_t>;

std::int64_t streakEndingOn(LocalDay day, const DailyActivity &activity) {
    std::int64_t length = 0;
    while (activity.contains(day)) {
        ++length;
        day -= days(1);
    }
    return length;
}

std::int64_t currentStreakOf(const DailyActivity &activity, LocalDay today) {
    const std::int64_t untilToday = streakEndingOn(today, activity);
    return untilToday > 0 ? untilToday : streakEndingOn(today - days(1), activity);
}

std::int64_t longestRunOf(const DailyActivity &activity) {
    std::int64_t longest = 0;
    std::int64_t run = 0;
    std::optional<LocalDay> previous;
    for (const auto &[day, tokens] : activity) {
        run = previous && *previous + days(1) == day ? run + 1 : 1;
        longest = std::max(longest, run);
        previous = day;
    }
    return longest;
}

} // namespace

void addCounts(SessionTokens &sums, const SessionTokens &counts) {
    sums.input = addTokens(sums.input, counts.input);
    sums.output = addTokens(sums.output, counts.output);
    sums.cacheCreation = addTokens(sums.cacheCreation, counts.cacheCreation);
    sums.cacheRead = addTokens(sums.cacheRead, counts.cacheRead);
}

HistoryBuilder::ModelSums &HistoryBuilder::sumsOf(InternedString model) {
    if (m_lastSums == nullptr || m_lastModel != model) {
        m_lastModel = model;
        m_lastSums = &m_models[model];
    }
    return *m_lastSums;
}

std::int64_t &HistoryBuilder::tokensOn(LocalDay day) {
    if (m_lastDay == m_days.end() || m_lastDay->first != day)
        m_lastDay = m_days.try_emplace(day, 0).first;
    return m_lastDay->second;
}

void HistoryBuilder::add(const JSONLEntry &entry, bool isMessage) {
    const SessionTokens &counts = entry.counts();
    const int messages = isMessage ? 1 : 0;
    m_messageCount += messages;
    addCounts(m_totalTokens, counts);

    ModelSums *model = entry.model().hasValue() ? &sumsOf(entry.model()) : nullptr;
    if (model != nullptr) {
        model->input = addTokens(model->input, counts.input);
        model->output = addTokens(model->output, counts.output);
    }

    const auto instant = entry.timestamp();
    if (!instant)
        return;
    const auto local = m_cursor.localTimeOf(*instant);
    const LocalDay day = std::chrono::floor<days>(local);
    std::int64_t &tokens = tokensOn(day);
    for (const std::int64_t count : {counts.input, counts.output, counts.cacheCreation, counts.cacheRead})
        tokens = addTokens(tokens, count);
    m_entriesPerHour[static_cast<std::size_t>((local - day) / std::chrono::hours(1))] += messages;
    if (model != nullptr)
        model->datedEntries += messages;
}

void HistoryBuilder::add(const HistoryBuilder &other) {
    m_messageCount += other.m_messageCount;
    addCounts(m_totalTokens, other.m_totalTokens);
    for (const auto &[day, tokens] : other.m_days) {
        std::int64_t &sum = tokensOn(day);
        sum = addTokens(sum, tokens);
    }
    for (std::size_t hour = 0; hour < m_entriesPerHour.size(); ++hour)
        m_entriesPerHour[hour] += other.m_entriesPerHour[hour];
    for (const auto &[model, sums] : other.m_models) {
        ModelSums &total = sumsOf(model);
        total.datedEntries += sums.datedEntries;
        total.input = addTokens(total.input, sums.input);
        total.output = addTokens(total.output, sums.output);
    }
}

HistoricalData HistoryBuilder::finish(std::int64_t sessionCount, LocalDay today) const {
    HistoricalData history;
    history.sessionCount = sessionCount;
    history.messageCount = m_messageCount;
    history.totalTokens = m_totalTokens;
    history.activeDays = static_cast<std::int64_t>(m_days.size());
    history.currentStreak = currentStreakOf(m_days, today);
    history.longestStreak = std::max(longestRunOf(m_days), history.currentStreak);
    history.dailyActivity = m_days;

    const auto busiest = std::max_element(m_entriesPerHour.begin(), m_entriesPerHour.end());
    if (*busiest > 0)
        history.peakHour = busiest - m_entriesPerHour.begin();

    double grandTotal = 0;
    std::int64_t mostEntries = 0;
    for (const auto &[model, sums] : m_models) {
        const std::string_view name = model.view();
        grandTotal += static_cast<double>(addTokens(sums.input, sums.output));
        history.modelStats.push_back({std::string(name), sums.input, sums.output, 0});
        const bool favorite =
            sums.datedEntries > mostEntries ||
            (sums.datedEntries == mostEntries && mostEntries > 0 && name < *history.favoriteModel);
        if (favorite) {
            mostEntries = sums.datedEntries;
            history.favoriteModel = name;
        }
    }
    for (ModelStat &stat : history.modelStats) {
        if (grandTotal > 0)
            stat.percentage =
                static_cast<double>(addTokens(stat.inputTokens, stat.outputTokens)) / grandTotal * 100;
    }
    std::sort(history.modelStats.begin(), history.modelStats.end(),
              [](const ModelStat &a, const ModelStat &b) {
                  return a.percentage != b.percentage ? a.percentage > b.percentage : a.name < b.name;
              });
    return history;
}

} // namespace burnwick
