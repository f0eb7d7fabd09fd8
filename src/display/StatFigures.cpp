// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/StatFigures.h"

#include "display/DisplayFormat.h"
#include "display/DisplayText.h"
#include "display/PriceText.h"

namespace burnwick {

std::array<StatFigure, 12> statFigures(const HistoricalData &history, std::optional<double> sessionCost) {
    const SessionTokens &tokens = history.totalTokens;
    const auto inDays = [](std::int64_t days) { return std::to_string(days) + 'd'; };
    return {{
        {"Sessions", std::to_string(history.sessionCount)},
        {"Messages", std::to_string(history.messageCount)},
        {"Total tokens", tokenCountText(tokens.total())},
        {"Active days", std::to_string(history.activeDays)},
        {"Cache Effective", percentText(cacheEfficiencyPct(tokens))},
        {"Input", tokenCountText(tokens.input)},
        {sessionCostLabel, priceText(sessionCost)},
        {"Current streak", inDays(history.currentStreak)},
        {"Longest streak", inDays(history.longestStreak)},
        {"Peak hour", peakHourText(history.peakHour)},
        {"Favorite model",
         history.favoriteModel ? displayText(modelFamilyName(*history.favoriteModel)) : "--"},
        {"Output", tokenCountText(tokens.output)},
    }};
}

std::string sessionCostNote(const UsageFigures &usage) {
    const PricedTokens exact = priceOf(usage.exactSession);
    std::string note = costText(usage.loggedSession.cost) + " as logged";
    if (const auto cost = costOf(exact))
        note += " · " + costText(*cost) + " exact, at API prices";
    if (exact.unpriced > 0)
        note += " · " + unpricedText(exact);
    return note;
}

} // namespace burnwick
