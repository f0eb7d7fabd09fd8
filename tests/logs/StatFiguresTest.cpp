// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/StatFigures.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(StatFigures, ReadInTheirOrder) {
    HistoricalData history;
    history.sessionCount = 1234;
    history.messageCount = 56789;
    history.totalTokens = {1'500, 999'999, 100'000, 8'898'501};
    history.activeDays = 40;
    history.currentStreak = 4;
    history.longestStreak = 17;
    history.peakHour = 13;
    history.favoriteModel = "claude-opus-4-5-20251101";
    const std::array<StatFigure, 12> expected{{{"Sessions", "1234"},
                                               {"Messages", "56789"},
                                               {"Total tokens", "10.0M"},
                                               {"Active days", "40"},
                                               {"Cache Effective", "89%"},
                                               {"Input", "1.5K"},
                                               {"Session Cost", "$0.0042"},
                                               {"Current streak", "4d"},
                                               {"Longest streak", "17d"},
                                               {"Peak hour", "1 PM"},
                                               {"Favorite model", "Opus"},
                                               {"Output", "1000.0K"}}};
    EXPECT_EQ(statFigures(history, 0.0042), expected);
}

TEST(StatFigures, OfAnEmptyHistoryAreZeroOrDashes) {
    const char *values[] = {"0", "0", "0", "0", "0%", "0", "$0.00", "0d", "0d", "--", "--", "0"};
    const auto figures = statFigures({}, 0);
    for (std::size_t i = 0; i < figures.size(); ++i)
        EXPECT_EQ(figures[i].value, values[i]) << figures[i].label;
}

} // namespace
} // namespace burnwick
