// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Cost.h"
#include "model/DisplayFormat.h"
#include "model/StatusIndicator.h"

#include <gtest/gtest.h>

#include <limits>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

TEST(Figures, TokenCounts) {
    const struct {
        std::int64_t count;
        const char *text;
    } rows[] = {{0, "0"},
                {999, "999"},
                {1'000, "1.0K"},
                {999'949, "999.9K"},
                {999'999, "1000.0K"},
                {1'000'000, "1.0M"},
                {1'234'567, "1.2M"},
                {2'545'300'000, "2545.3M"}};
    for (const auto &row : rows)
        EXPECT_EQ(tokenCountText(row.count), row.text);
}

TEST(Figures, Costs) {
    const struct {
        double dollars;
        const char *text;
    } rows[] = {{0, "$0.00"},       {0.004, "$0.0040"}, {0.00999, "$0.0100"},    {0.01, "$0.01"},
                {12.346, "$12.35"}, {4.5, "$4.50"},     {1234567, "$1234567.00"}};
    for (const auto &row : rows)
        EXPECT_EQ(costText(row.dollars), row.text);
}

TEST(Figures, BurnRates) {
    EXPECT_EQ(burnRateText(0), "0 tokens/min");
    EXPECT_EQ(burnRateText(999.6), "1000 tokens/min");
    EXPECT_EQ(burnRateText(1000), "1.0K tokens/min");
    EXPECT_EQ(burnRateText(1500), "1.5K tokens/min");
}

TEST(Figures, TimeRemaining) {
    const Instant now = std::chrono::sys_days(std::chrono::year(2025) / 6 / 1);
    const struct {
        std::chrono::nanoseconds left;
        const char *text;
    } rows[] = {{-1s, "Now"},      {0s, "Now"},           {1ns, "0m"},          {42min + 59s, "42m"},
                {1h - 1ns, "59m"}, {1h, "1h 0m"},         {3h + 5min, "3h 5m"}, {48h - 1s, "47h 59m"},
                {48h, "2d 0h"},    {49h + 59min, "2d 1h"}};
    for (const auto &row : rows)
        EXPECT_EQ(timeRemainingText(now + row.left, now), row.text);
}

TEST(Figures, PeakHours) {
    EXPECT_EQ(peakHourText(std::nullopt), "--");
    EXPECT_EQ(peakHourText(0), "12 AM");
    EXPECT_EQ(peakHourText(11), "11 AM");
    EXPECT_EQ(peakHourText(12), "12 PM");
    EXPECT_EQ(peakHourText(13), "1 PM");
    EXPECT_EQ(peakHourText(23), "11 PM");
}

TEST(Figures, ModelFamilies) {
    const struct {
        const char *model;
        const char *family;
    } rows[] = {{"claude-opus-4", "Opus"},
                {"claude-3-5-sonnet-latest", "Sonnet"},
                {"claude-haiku-4-5", "Haiku"},
                {"opus-sonnet", "Sonnet"},
                {"vendor/model-x", "model-x"},
                {"a/b/c", "c"},
                {"gpt-4o", "gpt-4o"},
                {"Claude Opus", "Claude Opus"},
                {"vendor/", ""},
                {"", ""}};
    for (const auto &row : rows)
        EXPECT_EQ(modelFamilyName(row.model), row.family) << row.model;
}

TEST(Figures, CacheEfficiency) {
    EXPECT_EQ(cacheEfficiencyPct({}), 0);
    EXPECT_EQ(cacheEfficiencyPct({0, 0, 0, 7}), 100);
    EXPECT_EQ(cacheEfficiencyPct({1, 1, 1, 1}), 25);
    EXPECT_EQ(cacheEfficiencyPct({-5, 0, 0, 3}), 0);
}

TEST(Cost, PricesEachKindOfToken) {
    EXPECT_EQ(sessionCost({}), 0);
    EXPECT_DOUBLE_EQ(sessionCost({1'000'000, 100'000, 200'000, 5'000'000}), 6.75);
    EXPECT_DOUBLE_EQ(sessionCost({0, 0, 0, 1'000'000}), 0.3);
}

TEST(Cost, ProjectsTheBurnRate) {
    const ProjectedCosts costs = projectedCosts(225);
    EXPECT_DOUBLE_EQ(costs.today, 2.916);
    EXPECT_DOUBLE_EQ(costs.week, 20.412);
    EXPECT_DOUBLE_EQ(costs.month, 87.48);
    EXPECT_EQ(projectedCosts(0), ProjectedCosts{});
    EXPECT_EQ(projectedCosts(-3), ProjectedCosts{});
    EXPECT_EQ(projectedCosts(std::numeric_limits<double>::quiet_NaN()), ProjectedCosts{});
}

TEST(StatusIndicatorTest, ChangesAt41And81Percent) {
    EXPECT_EQ(statusIndicatorFor(std::nullopt), StatusIndicator::green);
    const struct {
        double pct;
        StatusIndicator indicator;
    } rows[] = {{0, StatusIndicator::green},     {40.999, StatusIndicator::green},
                {41.0, StatusIndicator::orange}, {80.999, StatusIndicator::orange},
                {81.0, StatusIndicator::red},    {130.0, StatusIndicator::red}};
    for (const auto &row : rows) {
        QuotaData quota;
        quota.fiveHourUsagePct = row.pct;
        quota.sevenDayUsagePct = 99;
        EXPECT_EQ(statusIndicatorFor(quota), row.indicator) << row.pct;
    }
}

TEST(SessionTokensTest, AnOverflowingTotalStopsTheProgramWithOneLine) {
    const SessionTokens tokens{std::numeric_limits<std::int64_t>::max(), 0, 1, 0};
    EXPECT_EXIT(static_cast<void>(tokens.total()), testing::ExitedWithCode(70),
                "^burnwick: the token counts [^\n]*\n$");
}

} // namespace
} // namespace burnwick
