// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/DisplayFormat.h"
#include "display/PriceText.h"
#include "display/StatFigures.h"
#include "display/StatusTitle.h"
#include "model/Cost.h"
#include "model/StatusIndicator.h"

#include <gtest/gtest.h>

#include <limits>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

QuotaData quotaAt(double pct) {
    QuotaData quota;
    quota.fiveHourUsagePct = pct;
    quota.sevenDayUsagePct = 99;
    return quota;
}

TEST(Figures, HaveTheirTexts) {
    const Instant now = std::chrono::sys_days(std::chrono::year(2025) / 6 / 1);
    const auto remaining = [now](std::chrono::nanoseconds left) {
        return timeRemainingText(now + left, now);
    };
    const std::pair<std::string, const char *> rows[] = {
        {tokenCountText(999), "999"},
        {tokenCountText(1'000), "1.0K"},
        {tokenCountText(999'999), "1000.0K"},
        {tokenCountText(1'000'000), "1.0M"},
        {countText(0, "day"), "0 days"},
        {countText(1, "day"), "1 day"},
        {countText(999, "day"), "999 days"},
        {countText(1'000, "day"), "1,000 days"},
        {countText(1'234'567, "day"), "1,234,567 days"},
        {costText(0.004), "$0.0040"},
        {costText(0.01), "$0.01"},
        {costText(1234567.346), "$1234567.35"},
        {burnRateText(0), "0 tokens/min"},
        {burnRateText(999.6), "1000 tokens/min"},
        {burnRateText(1000), "1.0K tokens/min"},
        {remaining(-1s), "Now"},
        {remaining(0s), "Now"},
        {remaining(1ns), "0m"},
        {remaining(1h - 1ns), "59m"},
        {remaining(1h), "1h 0m"},
        {remaining(48h - 1s), "47h 59m"},
        {remaining(48h), "2d 0h"},
        {resetText(std::nullopt, now), ""},
        {resetText(now, now), "resets now"},
        {resetText(now + 1h, now), "resets in 1h 0m"},
        {peakHourText(std::nullopt), "--"},
        {peakHourText(0), "12 AM"},
        {peakHourText(11), "11 AM"},
        {peakHourText(12), "12 PM"},
        {peakHourText(23), "11 PM"},
        {modelFamilyName("claude-3-5-sonnet-latest"), "Sonnet"},
        {modelFamilyName("claude-haiku-4-5"), "Haiku"},
        {modelFamilyName("opus-sonnet"), "Sonnet"},
        {modelFamilyName("a/b/model-x"), "model-x"},
        {modelFamilyName("Claude Opus"), "Claude Opus"},
        {modelFamilyName("vendor/"), ""},
    };
    for (const auto &[text, expected] : rows)
        EXPECT_EQ(text, expected);
}

TEST(Figures, CacheEfficiency) {
    EXPECT_EQ(cacheEfficiencyPct({}), 0);
    EXPECT_EQ(cacheEfficiencyPct({1, 1, 1, 1}), 25);
    EXPECT_EQ(cacheEfficiencyPct({-5, 0, 0, 3}), 0);
}

TEST(Cost, PricesEachKindOfTokenAndProjectsTheBurnRate) {
    EXPECT_DOUBLE_EQ(sessionCost({1'000'000, 100'000, 200'000, 5'000'000}), 6.75);
    const ProjectedCosts costs = projectedCosts(225);
    EXPECT_DOUBLE_EQ(costs.today, 2.916);
    EXPECT_DOUBLE_EQ(costs.week, 20.412);
    EXPECT_DOUBLE_EQ(costs.month, 87.48);
    EXPECT_EQ(projectedCosts(-3), ProjectedCosts{});
    EXPECT_EQ(projectedCosts(std::numeric_limits<double>::quiet_NaN()), ProjectedCosts{});
}

TEST(StatusIndicatorTest, ChangesAt41And81Percent) {
    EXPECT_EQ(statusIndicatorFor(std::nullopt), StatusIndicator::green);
    using enum StatusIndicator;
    for (const auto &[pct, indicator] :
         {std::pair(40.999, green), {41.0, orange}, {80.999, orange}, {81.0, red}})
        EXPECT_EQ(statusIndicatorFor(quotaAt(pct)), indicator) << pct;
}

TEST(StatusTitle, StylesEverySegment) {
    using enum TitleSegment::Weight;
    const StatusTitle title =
        buildStatusTitle({1'234'567, 0, 0, 0}, 4.5, quotaAt(67), StatusIndicator::orange);
    StatusTitle expected{
        {"1.2", semibold, false, {}},  {"M", regular, false, {}},
        {" | ", regular, true, {}},    {"$", regular, false, {}},
        {"4.50", semibold, false, {}}, {" | ", regular, true, {}},
        {"s", semibold, true, {}},     {"67%", heavy, false, {}},
        {"  ", regular, false, {}},    {"●", heavy, false, RgbColor{0.99, 0.74, 0.18}},
    };
    EXPECT_EQ(title, expected);

    UsageFigures usage{Calendar::inZone("UTC")};
    usage.sessionTokens.input = 1'234'567;
    usage.sessionCost = 4.5;
    AccountFigures account;
    account.quotaData = quotaAt(67);
    account.isQuotaStale = true;
    expected[7].dimmed = true;
    EXPECT_EQ(buildStatusTitle({usage, account}), expected);
}

TEST(ExactFigures, WithoutAnyPriceHaveNoCost) {
    UsageFigures usage{Calendar::inZone("UTC")};
    usage.loggedSession.cost = 12.4;
    usage.figureChoice = FigureChoice::exact;
    usage.exactSession.tokens.input = usage.sessionTokens.input = 7'100'000;
    const struct {
        double cost;
        std::int64_t unpriced;
        const char *title, *tile, *note;
    } rows[] = {
        {7.1, 0, "7.1M | $7.10 | s--  ●", "$7.10", "$12.40 as logged · $7.10 exact, at API prices"},
        {7.1, 1, "7.1M | $7.10 | s--  ●", "$7.10",
         "$12.40 as logged · $7.10 exact, at API prices · 1 token with no price"},
        {0, 7'100'000, "7.1M | $-- | s--  ●", "no price", "$12.40 as logged · 7.1M tokens with no price"},
    };
    for (const auto &row : rows) {
        usage.exactSession.cost = usage.sessionCost = row.cost;
        usage.exactSession.unpricedTokens = row.unpriced;
        EXPECT_EQ(plainText(buildStatusTitle({usage, {}})), row.title);
        EXPECT_EQ(statFigures({}, shownCost(usage))[6].value, row.tile);
        EXPECT_EQ(sessionCostNote(usage), row.note);
    }
}

} // namespace
} // namespace burnwick
