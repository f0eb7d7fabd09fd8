// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LogFigures.h"

#include "model/Cost.h"

#include <algorithm>

namespace burnwick {

Instant recentSince(const Calendar &calendar, Instant now) {
    return calendar.daysBefore(now, 1);
}

void updateSession(UsageFigures &figures, std::span<const LogEntries> recentEntries, Instant readAt) {
    figures.sessionReadAt = readAt;
    figures.recentFileCount = recentEntries.size();
    figures.hasJSONLData = std::ranges::any_of(
        recentEntries, [](const LogEntries &entries) { return entries != nullptr && !entries->empty(); });
    figures.sessionTokens = JSONLParser::calculateSessionTokens(recentEntries);
    figures.sessionCost = sessionCost(figures.sessionTokens);
    figures.burnRateTokensPerMin = JSONLParser::calculateBurnRate(recentEntries);
    const ProjectedCosts projected = projectedCosts(figures.burnRateTokensPerMin);
    figures.projectedTodayCost = projected.today;
    figures.projectedWeeklyCost = projected.week;
    figures.projectedMonthlyCost = projected.month;
}

void updateLogs(UsageFigures &figures, const LogHistory &history) {
    // The files are in the order of their times.
    const auto first = std::ranges::find_if(
        history.files, [](const LogFile &file) { return file.status.regular && file.status.modified; });
    figures.oldestLog = first != history.files.end() ? first->status.modified : std::nullopt;
    figures.keptSessions = std::ssize(history.kept);
    figures.keptMessages = 0;
    for (const LogEntries &lines : history.kept)
        figures.keptMessages += std::ssize(*lines);
}

void updateHistory(UsageFigures &figures, const HistorySums &sums, Instant now) {
    figures.historicalData = sums.within(figures.timeFilter, now);
    figures.lastUpdated = now;
}

} // namespace burnwick
