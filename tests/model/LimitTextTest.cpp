// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/LimitText.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using Kind = Limit::Kind;
using State = Forecast::State;

const Instant now = test::at("2026-11-21T12:55:00Z"); // Saturday
const Instant reset = now + 2h + 5min;
const Instant weekReset = now + 86h + 5min;

LimitCourse courseOf(Kind kind, std::optional<Instant> resetsAt) {
    return {{kind, {}, 67, resetsAt, now - 35min}, {{now - 25h, 40}, {now - 61min, 55.4}, {now, 67}}};
}

TEST(LimitWords, SayWhetherTheWindowWillLast) {
    const LimitCourse session = courseOf(Kind::session, reset), weekly = courseOf(Kind::weekly, weekReset);
    const auto expected = [](std::optional<Instant> fullAt = {}, std::optional<Instant> earliest = {}) {
        return Forecast{State::expected, now, 67, 67, Forecast::Range{80, 92.4, 98}, fullAt, earliest};
    };
    const Forecast full{State::full, now, 101, 100, Forecast::Range{100, 100, 100}, now - 5min, now - 5min};
    const Forecast quiet{State::quiet, now, 67, 67, Forecast::Range{67, 67, 67}};
    using enum LimitWords::Tone;
    const struct {
        const char *what;
        LimitCourse course;
        Forecast forecast;
        LimitWords words;
    } rows[] = {
        {"lasts",
         session,
         expected(),
         {calm, "Probably 92% when it resets at 15:00", "12% in the last hour"}},
        {"lasts a week",
         weekly,
         expected(),
         {calm, "Probably 92% when it resets on Wed 03:00", "27% in the last day"}},
        {"may be full",
         session,
         expected({}, now + 104min),
         {near, "Could be full by 14:40", "Probably 92% when it resets at 15:00"}},
        {"may be full just before the reset",
         courseOf(Kind::session, reset - 2min),
         expected({}, reset - 3min),
         {near, "Could be full by 14:55", "Probably 92% when it resets at 14:58"}},
        {"full early",
         session,
         expected(now + 27min, now + 10min),
         {over, "Full at 13:20, 1h 40m before it resets", "12% in the last hour"}},
        {"full early in the week",
         weekly,
         expected(now + 27min, now + 10min),
         {over, "Full on Sat 13:00, 3d 14h before it resets", "27% in the last day"}},
        {"full just before the reset",
         session,
         expected(reset - 2min, now + 10min),
         {near, "Could be full by 13:05", "Probably 92% when it resets at 15:00"}},
        {"full", session, full, {over, "Full until 15:00", "2h 5m to wait"}},
        {"quiet", session, quiet, {calm, "Quiet: stays at 67% until 15:00", ""}},
        {"collecting", session, {}, {calm, "Collecting…", "A forecast takes ten minutes"}},
        {"stale", session, {State::stale, now - 35min, 70, 70}, {calm, "67% used", "Last measured at 12:20"}},
        {"waiting",
         courseOf(Kind::weekly, now - 1min),
         {State::waiting},
         {calm, "Reset on Sat 12:54, waiting for figures", ""}},
        {"no window",
         courseOf(Kind::session, {}),
         {},
         {calm, "67% used", "The window begins with the next answer"}},
    };
    const Calendar calendar = Calendar::inZone("UTC");
    for (const auto &row : rows) {
        const LimitWords words = limitWords(row.course, row.forecast, calendar, now);
        EXPECT_EQ(words.sentence, row.words.sentence) << row.what;
        EXPECT_EQ(words.detail, row.words.detail) << row.what;
        EXPECT_EQ(words.tone, row.words.tone) << row.what;
    }
}

TEST(LimitWords, NameTheLimitAndItsLocalTime) {
    const Calendar tokyo = Calendar::inZone("Asia/Tokyo");
    UsageFigures usage{tokyo};
    usage.limitCourses = {courseOf(Kind::session, now - 1min), courseOf(Kind::weekly, now - 15h),
                          courseOf(Kind::weeklyScoped, now - 1min), courseOf(Kind::session, {})};
    usage.limitCourses[2].limit.model = "Opus\n4";
    AccountFigures account;
    account.quotaReadAt = now;
    std::vector<std::string> lines{"Session: Reset at 21:54, waiting for figures",
                                   "Weekly: Reset on Sat 06:55, waiting for figures",
                                   "Opus\uFFFD4: Reset on Sat 21:54, waiting for figures"};
    EXPECT_EQ(limitLines({usage, account}, now), lines);
    EXPECT_EQ(limitTimeText(Kind::weekly, now + 125min - 1s, tokyo), "Sun 00:00");
    account.isQuotaStale = true;
    lines.emplace_back("as of 21:55");
    EXPECT_EQ(limitLines({usage, account}, now), lines);
}

TEST(LimitRows, TheGravestForecastIsTheRemark) {
    using enum LimitWords::Tone;
    const auto row = [](const char *name, LimitWords::Tone tone) {
        return LimitRow{name, 67, now, {tone, std::string(name) + " sentence", {}}};
    };
    const LimitRow session = row("Session", calm), weekly = row("Weekly", near), opus = row("Opus", near);
    const struct {
        std::vector<LimitRow> rows;
        OAuthStatus link;
        std::vector<std::string> remarks;
    } cases[] = {
        {{session}, OAuthStatus::connected, {"Session sentence"}},
        {{session, weekly, opus}, OAuthStatus::expired, {"Weekly: Weekly sentence"}},
        {{}, OAuthStatus::disconnected, {"Not connected"}},
        {{}, OAuthStatus::expired, {"Not connected"}},
        {{}, OAuthStatus::unknown, {}},
    };
    for (const auto &[rows, link, remarks] : cases) {
        Snapshot snapshot{UsageFigures{Calendar::inZone("UTC")}, {}};
        snapshot.account.oauthStatus = link;
        EXPECT_EQ(limitRemarks(snapshot, rows), remarks);
        snapshot.account.isQuotaStale = true;
        snapshot.account.quotaReadAt = now;
        EXPECT_EQ(limitRemarks(snapshot, rows).back(), "as of 12:55");
    }
    Snapshot snapshot{UsageFigures{Calendar::inZone("UTC")}, {}};
    snapshot.usage.limitCourses = {courseOf(Kind::weekly, now - 1min), courseOf(Kind::session, {})};
    snapshot.usage.limitCourses[1].limit.usedPct = 130;
    const auto rows = limitRows(snapshot, now);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].name, "Weekly");
    EXPECT_EQ(rows[0].resetsAt, now - 1min);
    EXPECT_EQ(rows[0].words.sentence, "Reset on Sat 12:54, waiting for figures");
    EXPECT_EQ(rows[1].usedPct, 130);
    EXPECT_EQ(rows[1].resetsAt, std::nullopt);
    EXPECT_EQ(rows[0].bar, "■■■■■■■□□□ 67% Weekly, resets on Sat 12:54");
    EXPECT_EQ(rows[1].bar, "■■■■■■■■■■ 130% Session");
}

} // namespace
} // namespace burnwick
