// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LimitFigures.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <limits>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using Kind = Limit::Kind;
using Source = Limit::Source;

const Instant now = test::at("2025-06-10T12:00:00Z");
constexpr double nan = std::numeric_limits<double>::quiet_NaN();

/// Returns an observation of the status line.
Limit seen(Kind kind, double percent, std::chrono::seconds age = 0s, std::optional<Instant> reset = now + 1h,
           const char *model = "") {
    return {kind, model, percent, reset, now - age, Source::statusLine};
}
/// Returns a limit that the endpoint sent.
Limit sent(Kind kind, double percent, std::chrono::seconds age = 0s, std::optional<Instant> reset = now + 1h,
           const char *model = "") {
    return {kind, model, percent, reset, now - age, Source::endpoint};
}

std::vector<double> percentagesOf(const AccountFigures &figures) {
    std::vector<double> percentages;
    for (const Limit &limit : figures.limits)
        percentages.push_back(limit.usedPct);
    return percentages;
}

TEST(LimitFigures, ALaterObservationReplacesAnEarlierOne) {
    const auto of = [](Limit limit) { return std::vector{std::move(limit)}; };
    const struct {
        const char *what;
        Limit known, observed;
        double percent;
        std::chrono::seconds age; ///< afterwards
    } rows[] = {
        {"later", sent(Kind::session, 10, 60s), seen(Kind::session, 20, 30s), 20, 30s},
        {"lower", sent(Kind::session, 10, 60s), seen(Kind::session, 5, 30s), 5, 30s},
        {"earlier", sent(Kind::session, 10, 30s), seen(Kind::session, 20, 60s), 10, 30s},
        {"in the future", sent(Kind::session, 10, 30s), seen(Kind::session, 20, -1h), 20, 0s},
        {"after the clock was set back", sent(Kind::session, 10, -1h), seen(Kind::session, 20), 20, 0s},
        {"not finite", sent(Kind::session, 10, 30s), seen(Kind::session, nan), 10, 30s},
        {"negative", sent(Kind::session, 10, 30s), seen(Kind::session, -7), 0, 0s},
        {"above 100", sent(Kind::session, 10, 30s), seen(Kind::session, 170), 170, 0s},
        {"of a window that is over", sent(Kind::session, 10, 30s), seen(Kind::session, 95, 0s, now), 10, 30s},
        {"both windows are over", sent(Kind::session, 10, 1h, now - 2h), seen(Kind::session, 95, 0s, now), 95,
         0s},
        {"the known reset is absurd", sent(Kind::session, 10, 30s, now + 240h),
         seen(Kind::session, 95, 0s, now), 95, 0s},
        {"without a reset", sent(Kind::session, 10, 30s), seen(Kind::session, 0, 0s, {}), 0, 0s},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        AccountFigures figures;
        takeAnswer(figures, {{row.known.usedPct, 3, 4, row.known.resetsAt, {}, {}}, {}, of(row.known)},
                   row.known.observedAt);
        const bool isTaken = takeObservations(figures, of(row.observed), now);
        EXPECT_EQ(isTaken, figures.limits.front().source == Source::statusLine);
        EXPECT_EQ(percentagesOf(figures), std::vector{row.percent});
        EXPECT_EQ(figures.limits.front().observedAt, now - row.age);
        const QuotaData quota = figures.quotaData.value();
        EXPECT_EQ(quota, (QuotaData{row.percent, 3, 4, figures.limits.front().resetsAt, {}, {}}));
        EXPECT_EQ(figures.quotaReadAt, now - row.age);
    }
}

TEST(LimitFigures, AQuotaNeedsASession) {
    AccountFigures figures;
    EXPECT_FALSE(takeObservations(
        figures, {seen(Kind::weeklyScoped, 9, 60s, {}, "Claude Design"), seen(Kind::weekly, 30, 60s)}, now));
    EXPECT_EQ(figures.quotaData, std::nullopt);
    EXPECT_EQ(figures.quotaReadAt, std::nullopt);
    EXPECT_TRUE(takeObservations(figures, {seen(Kind::session, 50, 30s), seen(Kind::session, 51, 30s)}, now));
    EXPECT_EQ(figures.quotaData, (QuotaData{50, 30, 9, now + 1h, now + 1h, {}}));
    EXPECT_EQ(figures.quotaReadAt, now - 30s);
    EXPECT_EQ(percentagesOf(figures), (std::vector<double>{50, 30, 9}));
    // Other limits do not make the session's figures younger.
    EXPECT_FALSE(takeObservations(figures, {seen(Kind::weekly, 31)}, now));
    EXPECT_EQ(figures.quotaReadAt, now - 30s);
    EXPECT_EQ(figures.quotaData->sevenDayUsagePct, 31);
}

TEST(LimitFigures, AnAnswerKeepsLimitsThatOnlyTheStatusLineSeesUntilTheirReset) {
    const struct {
        const char *what;
        Limit known;
        bool kept;
    } rows[] = {
        {"in its window", seen(Kind::weeklyScoped, 5, 1h, now + 1s, "Claude Design"), true},
        {"its window is over", seen(Kind::weeklyScoped, 5, 1h, now, "Claude Design"), false},
        {"no window", seen(Kind::weeklyScoped, 5, 1h, {}, "Claude Design"), false},
        {"an absurd reset", seen(Kind::weeklyScoped, 5, 1h, now + 87'600h, "Claude Design"), false},
        {"sent before", sent(Kind::weeklyScoped, 5, 1h, now + 1h, "Claude Design"), false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        AccountFigures figures;
        figures.limits = {seen(Kind::session, 1, 1h), row.known};
        takeAnswer(
            figures,
            {{10, 20, 0, {}, {}, {}},
             {},
             {sent(Kind::session, 10), sent(Kind::weekly, 20), sent(Kind::weeklyScoped, 30, 0s, {}, "A")}},
            now);
        EXPECT_EQ(percentagesOf(figures),
                  row.kept ? (std::vector<double>{10, 20, 5, 30}) : (std::vector<double>{10, 20, 30}));
        EXPECT_EQ(figures.quotaData->claudeDesignWeeklyPct, row.kept ? 5 : 0);
        EXPECT_EQ(figures.quotaReadAt, now);
    }
}

} // namespace
} // namespace burnwick
