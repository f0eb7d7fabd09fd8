// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forecast/Forecast.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using State = Forecast::State;

const Instant start = test::at("2026-11-21T10:00:00Z");

/// At a minute of the window.
struct Amount {
    double minute;
    double amount;
};
using Amounts = std::vector<Amount>;

Instant minuteOf(double minute) {
    return start + std::chrono::nanoseconds(std::llround(minute * 60e9));
}

template <typename T>
std::vector<T> convert(const Amounts &amounts) {
    std::vector<T> values;
    for (const Amount &amount : amounts)
        values.push_back({minuteOf(amount.minute), amount.amount});
    return values;
}

Forecast forecastAt(double minute, const Amounts &samples, const Amounts &tokens = {},
                    std::chrono::nanoseconds length = 5h) {
    const LimitWindow window{.resetsAt = start + length, .length = length, .staleAfter = 10min};
    return forecastLimit(window, convert<LimitSample>(samples), convert<TokenUse>(tokens), minuteOf(minute));
}

/// One every five minutes, `step` more each time.
Amounts every5Minutes(double from, double to, double step) {
    Amounts amounts;
    for (double minute = from; minute <= to; minute += 5)
        amounts.push_back({minute, step * static_cast<double>(amounts.size())});
    return amounts;
}

void expectSame(const Forecast &forecast, const Forecast &expected, double tolerance = 0) {
    EXPECT_EQ(forecast.state, expected.state);
    EXPECT_NEAR(forecast.percent, expected.percent, tolerance);
    ASSERT_TRUE(forecast.atReset && expected.atReset);
    EXPECT_NEAR(forecast.atReset->low, expected.atReset->low, tolerance);
    EXPECT_NEAR(forecast.atReset->high, expected.atReset->high, tolerance);
}

TEST(Forecast, StateFollowsFromSamplesAndTime) {
    const struct {
        const char *name;
        double minute;
        Amounts samples, tokens;
        std::chrono::nanoseconds length;
        State expected;
    } rows[] = {
        {"no samples", 30, {}, {{29, 1}}, 5h, State::collecting},
        {"one sample", 30, {{20, 5}}, {}, 5h, State::collecting},
        {"under ten minutes", 29.9, {{20, 5}, {25, 6}}, {}, 5h, State::collecting},
        {"ten minutes", 30, {{20, 5}, {25, 6}}, {}, 5h, State::expected},
        {"as old as allowed", 35, {{20, 5}, {25, 6}}, {}, 5h, State::expected},
        {"older", 35.1, {{20, 5}, {25, 6}}, {}, 5h, State::stale},
        {"quiet for less than an hour", 79.9, {{20, 5}, {75, 5}}, {}, 5h, State::expected},
        {"quiet for an hour", 80, {{20, 5}, {75, 5}}, {}, 5h, State::quiet},
        {"tokens in the last hour", 80, {{20, 5}, {75, 5}}, {{21, 1}}, 5h, State::expected},
        {"a token without weight in the last hour", 80, {{20, 5}, {75, 5}}, {{21, 0}}, 5h, State::quiet},
        {"never used", 80, {{20, 0}, {75, 0}}, {}, 5h, State::quiet},
        {"quiet for hours in a week", 800, {{20, 5}, {795, 5}}, {}, 168h, State::expected},
        {"full", 30, {{20, 95}, {25, 100}}, {}, 5h, State::full},
        {"full and a single sample", 30, {{25, 103}}, {}, 5h, State::full},
        {"full and old", 250, {{20, 95}, {25, 100}}, {}, 5h, State::full},
        {"just before the reset", 299.9, {{285, 95}, {295, 96}}, {}, 5h, State::expected},
        {"reset", 300, {{285, 95}, {295, 96}}, {}, 5h, State::waiting},
        {"reset while full", 301, {{285, 95}, {295, 100}}, {}, 5h, State::waiting},
        {"samples of the last window alone", 30, {{-40, 95}, {-1, 97}}, {}, 5h, State::collecting},
        {"one sample after a negative one", 30, {{20, -5}, {25, 0}}, {}, 5h, State::collecting},
        {"clock put back", 5, {{20, 5}, {25, 6}}, {}, 5h, State::collecting},
        {"no length", 30, {{20, 5}, {25, 6}}, {}, 0h, State::waiting},
    };
    for (const auto &row : rows) {
        const Forecast forecast = forecastAt(row.minute, row.samples, row.tokens, row.length);
        EXPECT_EQ(forecast.state, row.expected) << row.name;
        EXPECT_EQ(forecast.atReset.has_value(), row.expected == State::expected ||
                                                    row.expected == State::quiet ||
                                                    row.expected == State::full)
            << row.name;
    }
}

TEST(Forecast, FixedStatesHaveNoBand) {
    const Forecast quiet = forecastAt(80, {{20, 5}, {75, 5}});
    EXPECT_EQ(quiet.atReset->low, 5);
    EXPECT_EQ(quiet.atReset->high, 5);
    EXPECT_FALSE(quiet.fullAt || quiet.earliestFullAt);

    const Forecast full = forecastAt(40, {{20, 95}, {25, 103}, {35, 104}});
    EXPECT_EQ(full.atReset->low, 100);
    EXPECT_EQ(full.atReset->high, 100);
    EXPECT_EQ(full.percent, 100);
    EXPECT_EQ(full.rawPercent, 104);
    EXPECT_EQ(full.fullAt, minuteOf(25));
    EXPECT_EQ(full.measuredAt, minuteOf(35));
}

TEST(Forecast, DisturbedInputGivesTheForecastOfCleanInput) {
    const Amounts samples = every5Minutes(0, 90, 2), tokens = every5Minutes(2, 87, 1);
    const Forecast clean = forecastAt(91.9, samples, tokens);
    ASSERT_EQ(clean.state, State::expected);
    const double infinity = std::numeric_limits<double>::infinity(), nan = std::nan("");
    const struct {
        const char *name;
        Amounts samples, tokens;
    } rows[] = {
        {"duplicates", samples, {}},
        {"last window", {{-5, 97}, {-60, 40}}, {{-5, 1000}}},
        {"after now", {{95, 90}}, {{95, 1000}}},
        {"next window", {{301, 5}}, {{400, 10}}},
        {"late old figures", {{47, 15}, {91, 30}}, {}},
        {"no numbers", {{50, nan}, {51, infinity}, {52, -3}}, {{50, nan}, {51, infinity}, {91.5, -1e9}}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        Amounts allSamples = samples, allTokens = tokens;
        allSamples.insert(allSamples.end(), row.samples.begin(), row.samples.end());
        allTokens.insert(allTokens.end(), row.tokens.begin(), row.tokens.end());
        for (int attempt = 0; attempt < 3; ++attempt) {
            expectSame(forecastAt(91.9, allSamples, allTokens), clean);
            std::shuffle(allSamples.begin(), allSamples.end(), std::mt19937(1));
            std::shuffle(allTokens.begin(), allTokens.end(), std::mt19937(2));
        }
    }
}

TEST(Forecast, AnEarlyResetBeginsAnew) {
    const Amounts samples{{5, 40}, {30, 80}, {40, 1}, {50, 2}, {60, 3}};
    const Forecast forecast = forecastAt(62, samples, {{20, 9}, {31, 1}});
    EXPECT_EQ(forecast.percent, 3);
    expectSame(forecast, forecastAt(62, samples, {{31, 1}}));
}

TEST(Forecast, UpperEndIsPlausible) {
    const struct {
        const char *name;
        double minute;
        Amounts samples, tokens;
        std::chrono::nanoseconds length;
        double least, most;
    } rows[] = {
        {"one percent in the last minute", 10, {{0, 0}, {9, 0}, {10, 1}}, {}, 5h, 20, 99},
        {"three percent in a week's first hour", 60, {{0, 0}, {55, 3}}, {}, 168h, 20, 99},
        {"one percent after long use", 100, {{0, 0}, {90, 0}, {95, 1}}, {{5, 1}, {91, 1}}, 5h, 2, 10},
        {"no percent yet", 30, {{0, 0}, {25, 0}}, {{5, 1}, {25, 1}}, 5h, 2, 99},
        {"a night in a week", 3000, {{0, 0}, {2000, 20}, {2999, 20}}, {}, 168h, 50, 100},
    };
    for (const auto &row : rows) {
        const Forecast forecast = forecastAt(row.minute, row.samples, row.tokens, row.length);
        ASSERT_EQ(forecast.state, State::expected) << row.name;
        EXPECT_GE(forecast.atReset->high, row.least) << row.name;
        EXPECT_LE(forecast.atReset->high, row.most) << row.name;
    }
}

TEST(Forecast, PresentPercentCountsTokensSinceTheLastSample) {
    const Amounts samples = every5Minutes(0, 60, 2);
    const struct {
        const char *name;
        Amounts tokens;
        double expected;
    } rows[] = {
        {"none", {}, 24},
        {"none since", {{4, 10}, {59, 10}}, 24},
        {"at the rate so far", {{44, 50}, {61, 20}, {62, 5}}, 29},
        {"at the rate of the last ten percent", {{14, 1}, {44, 100}, {61, 20}}, 26},
        {"no more than that rate was learned from", {{44, 1}, {61, 1}, {62, 1}, {63, 1}}, 34},
        {"without a rate", {{61, 1000}}, 24},
        {"one absurd count since", {{30, 100}, {40, 100}, {50, 100}, {59, 100}, {61, 1}, {62, 1e18}}, 34},
    };
    for (const auto &row : rows)
        EXPECT_NEAR(forecastAt(64, samples, row.tokens).percent, row.expected, 1e-6) << row.name;
}

TEST(Forecast, AnAbsurdCountAmongOthersChangesLittle) {
    const Amounts samples = every5Minutes(0, 90, 2);
    Amounts tokens;
    for (double minute = 0; minute < 93; minute += 0.1)
        tokens.push_back({minute, 1});
    const Forecast clean = forecastAt(93, samples, tokens);
    for (const double minute : {10.05, 70.05}) {
        SCOPED_TRACE(minute);
        Amounts disturbed = tokens;
        disturbed.push_back({minute, 1e18});
        expectSame(forecastAt(93, samples, disturbed), clean, 1);
    }
}

TEST(Forecast, RangesAreOrderedAndInstantsAreBeforeTheReset) {
    std::mt19937 random(7);
    const auto upTo = [&](double limit) { return std::uniform_real_distribution(0.0, limit)(random); };
    int expected = 0;
    for (int attempt = 0; attempt < 2000; ++attempt) {
        const double length = attempt % 2 == 0 ? 300 : 10080;
        const double minute = upTo(length);
        Amounts samples, tokens;
        const double top = upTo(attempt % 3 == 0 ? 120 : 99), steps = 2 + upTo(40);
        for (double step = 0; step < steps; ++step)
            samples.push_back({std::max(0.0, minute - upTo(step < 2 ? 9 : length)), std::floor(upTo(top))});
        for (double step = upTo(100); step > 0; --step)
            tokens.push_back({upTo(length), upTo(1000)});
        const Forecast forecast =
            forecastAt(minute, samples, tokens, std::chrono::minutes(std::llround(length)));
        ASSERT_GE(forecast.rawPercent, forecast.percent);
        if (!forecast.atReset)
            continue;
        const Forecast::Range &range = *forecast.atReset;
        ASSERT_LE(forecast.percent, range.low);
        ASSERT_LE(range.low, range.middle);
        ASSERT_LE(range.middle, range.high);
        ASSERT_LE(range.high, 100);
        if (forecast.state != State::expected)
            continue;
        ++expected;
        ASSERT_EQ(forecast.fullAt.has_value(), range.middle >= 100);
        ASSERT_EQ(forecast.earliestFullAt.has_value(), range.high >= 100);
        for (const auto &instant : {forecast.fullAt, forecast.earliestFullAt}) {
            if (instant) {
                ASSERT_GE(*instant, minuteOf(minute) - 1us);
                ASSERT_LE(*instant, minuteOf(length) + 1us);
            }
        }
        if (forecast.fullAt) {
            ASSERT_LE(*forecast.earliestFullAt, *forecast.fullAt);
        }
    }
    EXPECT_GT(expected, 500);
}

TEST(Forecast, MoreUseRaisesTheForecastAndBringsTheFullInstantNearer) {
    for (const double length : {300.0, 10080.0}) {
        Forecast previous;
        bool wasFull = false;
        for (double percent = 0.1; percent < 99.9; percent += 0.1) {
            const double minute = length * 0.3;
            const Forecast forecast = forecastAt(minute, {{minute - 12, 0}, {minute - 1, percent}}, {{1, 1}},
                                                 std::chrono::minutes(std::llround(length)));
            ASSERT_EQ(forecast.state, State::expected);
            if (previous.atReset) {
                EXPECT_GE(forecast.atReset->middle, previous.atReset->middle);
            }
            if (forecast.fullAt && !wasFull) { // reached at the reset itself
                EXPECT_NEAR(forecast.atReset->middle, previous.atReset->middle, 1);
                EXPECT_GT(*forecast.fullAt, minuteOf(length * 0.98));
            } else if (forecast.fullAt) {
                EXPECT_LT(*forecast.fullAt, *previous.fullAt);
            }
            wasFull = forecast.fullAt.has_value();
            previous = forecast;
        }
        EXPECT_LT(*previous.fullAt, minuteOf(length * 0.302));
    }
}

/// A quadratic algorithm would exceed the test's time limit by far.
TEST(Forecast, HandlesAMillionSamples) {
    Amounts samples, tokens;
    for (double minute = 0; minute < 200; minute += 0.0002) {
        samples.push_back({minute, std::floor(minute / 3)});
        tokens.push_back({minute, 1 + std::fmod(minute, 7)});
    }
    EXPECT_EQ(forecastAt(200, samples, tokens).state, State::expected);
}

} // namespace
} // namespace burnwick
