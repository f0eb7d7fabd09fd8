// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/StatFigures.h"

#include <gtest/gtest.h>

#include <limits>

namespace burnwick {
namespace {

HistoricalData busyHistory() {
    HistoricalData history;
    history.sessionCount = 1234;
    history.messageCount = 56789;
    history.totalTokens = {1'500, 999'999, 100'000, 8'898'501};
    history.activeDays = 40;
    history.currentStreak = 4;
    history.longestStreak = 17;
    history.peakHour = 13;
    history.favoriteModel = "claude-opus-4-5-20251101";
    return history;
}

TEST(StatFigures, ReadInTheirOrder) {
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
    EXPECT_EQ(statFigures(busyHistory(), 0.0042), expected);
}

TEST(StatFigures, OfAnEmptyHistoryAreZeroOrDashes) {
    const char *values[] = {"0", "0", "0", "0", "0%", "0", "$0.00", "0d", "0d", "--", "--", "0"};
    const auto figures = statFigures({}, 0);
    for (std::size_t i = 0; i < figures.size(); ++i)
        EXPECT_EQ(figures[i].value, values[i]) << figures[i].label;
}

TEST(StatFigures, FollowTheEdgesOfTheirFormats) {
    HistoricalData history;
    history.totalTokens.cacheRead = 7;
    history.peakHour = 0;
    history.favoriteModel = "vendor/model-x";
    const auto figures = statFigures(history, 0.01);
    EXPECT_EQ(figures[4].value, "100%");
    EXPECT_EQ(figures[6].value, "$0.01");
    EXPECT_EQ(figures[9].value, "12 AM");
    EXPECT_EQ(figures[10].value, "model-x");
}

TEST(StatFigures, StopTheProgramWhenTheTotalOverflows) {
    HistoricalData history;
    history.totalTokens = {std::numeric_limits<std::int64_t>::max(), 1, 0, 0};
    EXPECT_EXIT(static_cast<void>(statFigures(history, 0)), testing::ExitedWithCode(70), "token counts");
}

} // namespace
} // namespace burnwick
