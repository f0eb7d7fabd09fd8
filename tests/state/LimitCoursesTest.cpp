// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/LimitCourses.h"
#include "support/StateFixture.h"

#include <QCoreApplication>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using Kind = Limit::Kind;

const Instant noon = test::at("2025-06-10T12:00:00Z");
constexpr double million = 3; ///< dollars for a million input tokens

JSONLEntry entry(std::optional<std::chrono::nanoseconds> time, std::int64_t millions,
                 const char *model = "claude-sonnet-4-5-20250929") {
    return {InternedString("assistant"), time ? std::optional(noon + *time) : std::nullopt,
            InternedString(model), SessionTokens{millions * 1'000'000, 0, 0, 0}};
}

/// Adds a file to those before it, or, without a time of modification, a list of kept lines.
void add(LogHistory &history, std::optional<Instant> modified, std::vector<JSONLEntry> entries) {
    auto list = std::make_shared<const EntryList>(std::move(entries));
    if (!modified)
        return history.kept.push_back(std::move(list));
    LogFile file;
    file.status.regular = true;
    file.status.modified = modified;
    history.files.push_back(file);
    history.entries.push_back(std::move(list));
}

TEST(LimitCourses, ALimitCoversTheModelsThatItNames) {
    const struct {
        const char *limit, *model;
        bool covers;
    } rows[] = {{"Sonnet", "claude-sonnet-4-5-20250929", true},
                {"Claude Sonnet 4.5", "claude-3-7-sonnet-20250219", true},
                {"sonnet_only", "Claude SONNET", true},
                {"Sonnet", "claude-opus-4-1", false},
                {"Claude Design", "claude-opus-4-1", false},
                {"Claude 4", "claude-opus-4-1", false},
                {"", "claude-opus-4-1", false},
                {"\xFF\xC3", "\xFF\xC3", false},
                {"Opus", "", false}};
    for (const auto &[limit, model, covers] : rows)
        EXPECT_EQ(coversModel(limit, model), covers) << limit << ", " << model;
}

TEST(LimitCourses, TokensAreTheDollarsOfTheWindowsEntriesInBins) {
    LogHistory history;
    add(history, noon - 8 * 24h, {entry(-10min, 1000)}); // an older time than its entries
    add(history, noon - 6 * 24h, {entry(-7 * 24h, 1000), entry(-6 * 24h, 2), entry(std::nullopt, 1000)});
    add(history, noon,
        {entry(-70min, 1), entry(-62min, 1, "claude-opus-4-1"), entry(-61min - 1s, 1), entry(-61min, 0),
         entry(-5min + 1s, 4), entry(-5min + 40s, 4), entry(-20s, 8), entry(-2min, 8), entry(7 * 24h, 1000)});
    add(history, std::nullopt, {entry(-2min + 30s, 16), entry(-5h, 1000, "claude-haiku-4-5")});
    const struct {
        Kind kind;
        const char *model;
        std::chrono::nanoseconds resets;
        std::vector<std::pair<std::chrono::seconds, double>> tokens; ///< in millions
    } rows[] = {
        {Kind::session, "", 1h, {{-70min, 1}, {-61min - 1s, 2}, {-5min + 40s, 8}, {-90s, 24}, {-20s, 8}}},
        {Kind::weekly,
         "",
         12h,
         {{-6 * 24h, 2}, {-5h, 1000}, {-61min - 1s, 3}, {-5min + 40s, 8}, {-90s, 24}, {-20s, 8}}},
        {Kind::weeklyScoped, "Opus", 12h, {{-62min, 1}}},
        {Kind::weeklyScoped, "Claude Haiku 4.5", 12h, {{-5h, 1000}}},
        {Kind::weeklyScoped, "Claude Design", 12h, {}},
        {Kind::session, "", 12h, {}}, // not in its window
        {Kind::session, "", 10min, {}},
    };
    std::vector<Limit> limits;
    for (const auto &row : rows)
        limits.push_back({row.kind, row.model, 5, noon + row.resets, noon - 4min});
    limits.back().resetsAt = std::nullopt;
    std::vector<LimitCourse> courses = coursesOf(limits, std::nullopt, {});
    auto use = addTokens(courses, history, nullptr);
    for (const bool isAgain : {false, true}) {
        for (std::size_t i = 0; i < std::size(rows); ++i) {
            std::vector<TokenUse> expected;
            for (const auto &[time, millions] : rows[i].tokens)
                expected.push_back({noon + time, millions * million});
            ASSERT_EQ(courses[i].tokens.size(), expected.size()) << "row " << i;
            for (std::size_t j = 0; j < expected.size(); ++j) {
                EXPECT_EQ((courses[i].tokens[j].at - noon).count(), (expected[j].at - noon).count())
                    << "row " << i << ", " << j;
                EXPECT_DOUBLE_EQ(courses[i].tokens[j].weight, expected[j].weight) << "row " << i << ", " << j;
            }
        }
        if (!isAgain)
            use = addTokens(courses, history, use.get());
    }
    // Lists are read again for a window that began earlier than the known use, and otherwise only new ones.
    courses = coursesOf(std::vector{limits[1]}, std::nullopt, {});
    courses[0].limit.resetsAt = noon + 1h;
    use = addTokens(courses, history, use.get());
    EXPECT_EQ(courses[0].tokens.front(), (TokenUse{noon - 6 * 24h, 2 * million}));
    courses[0].limit.observedAt -= 24h;
    courses[0].limit.resetsAt = noon - 23h;
    use = addTokens(courses, history, use.get());
    EXPECT_EQ(courses[0].tokens.front(), (TokenUse{noon - 7 * 24h, 1000 * million}));
    courses[0].limit.resetsAt = std::nullopt;
    EXPECT_EQ(addTokens(courses, history, use.get()), nullptr);
    EXPECT_TRUE(courses[0].tokens.empty());
}

TEST(LimitCourses, WithoutALedgerTheFormerSamplesOfTheWindowStay) {
    const Limit limit{Kind::session, "", 5, noon + 4h, noon};
    const struct {
        const char *name;
        Limit next;
        std::size_t samples;
    } rows[] = {
        {"the same window", {Kind::session, "", 6, noon + 4h + 2s, noon + 5min}, 2},
        {"another window", {Kind::session, "", 6, noon + 5h, noon + 5min}, 1},
        {"another kind", {Kind::weekly, "", 6, noon + 4h, noon + 5min}, 1},
        {"another model", {Kind::session, "m", 6, noon + 4h, noon + 5min}, 1},
        {"an earlier observation", {Kind::session, "", 6, noon + 4h, noon - 5min}, 1},
        {"no reset instant", {Kind::session, "", 6, std::nullopt, noon + 5min}, 1},
    };
    const auto former = coursesOf(std::vector{limit}, std::nullopt, {});
    for (const auto &[name, next, samples] : rows) {
        const auto courses = coursesOf(std::vector{next}, std::nullopt, former);
        ASSERT_EQ(courses.size(), 1U);
        EXPECT_EQ(courses[0].limit, next) << name;
        EXPECT_EQ(courses[0].samples.size(), samples) << name;
        EXPECT_EQ(courses[0].samples.back(), (LimitSample{next.observedAt, next.usedPct})) << name;
    }
}

class TrackedLimits : public test::StateFixture {
protected:
    void logTokens(int input) const {
        m_home.add("a.jsonl", test::usageLine("2025-06-10T12:00:00.000Z", input, 0), m_clock.now());
    }
};

TEST_F(TrackedLimits, LimitsAreRecordedOnceInTheBackgroundAndFollowedByTokens) {
    logTokens(1'000'000);
    auto services = this->services().usage;
    std::vector<std::size_t> recordings;
    bool fails = false;
    services.recordLimits = [&](std::span<const Limit> limits) {
        recordings.push_back(limits.size());
        return fails ? std::nullopt : m_ledger.recordLimits(limits);
    };
    UsageTracker tracker(std::move(services));
    const auto &courses = tracker.figures().limitCourses;
    const auto has = [&](std::size_t samples, double dollars) {
        return waitFor([&] {
            return courses.size() == 1 && courses[0].samples.size() == samples &&
                   courses[0].tokens.size() == 1 && courses[0].tokens[0].weight == dollars;
        });
    };
    Limit limit{Limit::Kind::session, "", 5, m_clock.now() + 4h, m_clock.now() + 1min};
    tracker.setLimits({limit});
    EXPECT_TRUE(recordings.empty()) << "before the start";
    tracker.start();
    EXPECT_TRUE(has(1, 3));
    EXPECT_TRUE(tracker.figures().historyReadAt);

    logTokens(2'000'000);
    tracker.setLimits({limit});
    tracker.refreshLocalData();
    EXPECT_TRUE(has(1, 6)) << "after a change of the logs";
    EXPECT_EQ(recordings, std::vector<std::size_t>{1}) << "recorded again";

    for (const bool isFailing : {false, true}) {
        fails = isFailing;
        limit.observedAt += 5min;
        limit.usedPct += 1;
        tracker.setLimits({limit});
        EXPECT_TRUE(has(isFailing ? 3 : 2, 6));
        EXPECT_EQ(courses[0].limit, limit);
    }
    tracker.setTimeFilter(TimeFilter::sevenDays);
    tracker.setLimits({});
    EXPECT_TRUE(waitFor([&] { return courses.empty(); }));
    EXPECT_EQ(tracker.figures().timeFilter, TimeFilter::sevenDays);
    tracker.stop();
    tracker.setLimits({limit});
    QCoreApplication::processEvents();
    EXPECT_TRUE(courses.empty());
}

} // namespace
} // namespace burnwick
