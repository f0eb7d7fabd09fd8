// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/ReportFigures.h"

namespace burnwick {

SessionFigures sessionFigures(std::span<const JSONLEntry> recentEntries) {
    SessionFigures session;
    session.hasJSONLData = !recentEntries.empty();
    session.tokens = JSONLParser::calculateSessionTokens(recentEntries);
    session.cost = sessionCost(session.tokens);
    session.burnRateTokensPerMin = JSONLParser::calculateBurnRate(recentEntries);
    session.projected = projectedCosts(session.burnRateTokensPerMin);
    return session;
}

SessionFigures readSession(const JSONLParser &parser) {
    return sessionFigures(parser.parseRecentEntries());
}

ReportFigures readReport(const JSONLParser &parser, TimeFilter timeFilter, LocalDay today) {
    const LogHistory logs = parser.parseAllEntries();
    ReportFigures figures;
    figures.session = sessionFigures(std::span(logs.entries).subspan(logs.firstRecent));
    figures.timeFilter = timeFilter;
    figures.history = parser.computeHistoricalData(logs, timeFilter);
    figures.today = today;
    return figures;
}

} // namespace burnwick
