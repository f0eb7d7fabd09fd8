// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LogFigures.h"

#include "model/Cost.h"

#include <algorithm>

namespace burnwick {

Instant recentSince(const Calendar &calendar, Instant now) {
    return calendar.daysBefore(now, 1);
}

void showSession(UsageFigures &figures) {
    const SessionFigures &shown =
        figures.figureChoice == FigureChoice::exact ? figures.exactSession : figures.loggedSession;
    figures.sessionTokens = shown.tokens;
    figures.sessionCost = shown.cost;
    figures.burnRateTokensPerMin = shown.burnRateTokensPerMin;
    figures.projectedTodayCost = shown.projectedTodayCost;
    figures.projectedWeeklyCost = shown.projectedWeeklyCost;
    figures.projectedMonthlyCost = shown.projectedMonthlyCost;
}

void updateSession(UsageFigures &figures, std::span<const LogEntries> recentEntries, ExactCounting &counting,
                   Instant readAt) {
    figures.sessionReadAt = readAt;
    figures.recentFileCount = recentEntries.size();
    figures.hasJSONLData = std::ranges::any_of(
        recentEntries, [](const LogEntries &entries) { return entries != nullptr && !entries->empty(); });
    const SessionTokens tokens = JSONLParser::calculateSessionTokens(recentEntries);
    const double burnRate = JSONLParser::calculateBurnRate(recentEntries);
    const ProjectedCosts projected = projectedCosts(burnRate);
    figures.loggedSession = {tokens,         sessionCost(tokens), 0, burnRate, projected.today,
                             projected.week, projected.month};
    figures.exactSession = counting.session(recentEntries);
    showSession(figures);
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

void updateHistory(UsageFigures &figures, const HistorySums &sums, const BreakdownSums &exactSums,
                   Instant now) {
    figures.historicalData = sums.within(figures.timeFilter, now);
    auto breakdown = exactSums.within(figures.timeFilter, now, figures.historicalData.sessionCount);
    if (figures.figureChoice == FigureChoice::exact)
        figures.historicalData = breakdown.history;
    // An equal one stays, so that comparisons of figures are cheap.
    if (breakdown != *figures.breakdown)
        figures.breakdown = std::make_shared<const UsageBreakdown>(std::move(breakdown));
    figures.lastUpdated = now;
}

} // namespace burnwick
