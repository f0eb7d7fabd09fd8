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

void updateHistory(UsageFigures &figures, const HistorySums &sums, Instant now) {
    figures.historicalData = sums.within(figures.timeFilter, now);
    figures.lastUpdated = now;
}

} // namespace burnwick
