// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "statusline/LatestLimits.h"

#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using Kind = Limit::Kind;

const Instant now(1'795'000'000s);

Limit observed(Kind kind, double percent, std::optional<Instant> resetsAt, Instant at = now,
               std::string model = {}) {
    return {kind, std::move(model), percent, resetsAt, at, Limit::Source::statusLine};
}

struct LatestLimitsTest : testing::Test {
    bool record(const std::vector<Limit> &limits) const { return latest.record(limits); }

    test::TemporaryDirectory home;
    fs::path folder = home.path() / "share" / "burnwick";
    fs::path file = folder / "limits.json";
    LatestLimits latest{folder};
};

TEST_F(LatestLimitsTest, KeepsTheLatestObservationOfEachLimitUntilItsReset) {
    const Limit session = observed(Kind::session, 67.4, now + 1h);
    const Limit scoped = observed(Kind::weeklyScoped, 5, now + 48h, now, "x \"<\n\u202e");
    ASSERT_TRUE(record({scoped, session}));
    EXPECT_EQ(latest.read(now), (std::vector{session, scoped}));
    EXPECT_EQ(fs::status(file).permissions(), fs::perms(0600));
    EXPECT_EQ(fs::status(folder).permissions(), fs::perms(0700));
    EXPECT_EQ(test::entriesOf(folder), 1) << "a temporary file is left";

    const std::string before = test::bytesOf(file);
    std::ifstream opened(file);
    const Limit weekly = observed(Kind::weekly, 1e-3, std::nullopt, now + 10s);
    ASSERT_TRUE(record({weekly}));
    EXPECT_EQ(std::string(std::istreambuf_iterator(opened), {}), before) << "others read a torn file";
    EXPECT_EQ(latest.read(now), (std::vector{session, weekly, scoped}));
    EXPECT_EQ(latest.read(now + 2h), (std::vector{weekly, scoped})) << "the session's window is over";

    const Limit later = observed(Kind::weekly, 2, now + 24h, now + 1h);
    ASSERT_TRUE(record({later}));
    EXPECT_EQ(latest.read(now + 1h), (std::vector{later, scoped}));
}

TEST_F(LatestLimitsTest, ReplacesTheFileOnlyForNews) {
    const Limit first = observed(Kind::session, 50, now + 1h);
    const struct {
        const char *what;
        Limit next;
        bool isNews;
    } rows[] = {
        {"the same half a minute later", observed(Kind::session, 50, now + 1h, now + 30s), false},
        {"the same a minute later", observed(Kind::session, 50, now + 1h, now + 60s), true},
        {"another percentage", observed(Kind::session, 50.1, now + 1h, now + 1s), true},
        {"a lower percentage", observed(Kind::session, 0, now + 1h, now + 1s), true},
        {"a reset that wobbles", observed(Kind::session, 50, now + 1h + 2s, now + 1s), false},
        {"another reset", observed(Kind::session, 50, now + 2h, now + 1s), true},
        {"no reset", observed(Kind::session, 50, std::nullopt, now + 1s), true},
        {"another limit", observed(Kind::weekly, 50, now + 1h, now + 1s), true},
        {"a clock that was set back", observed(Kind::session, 50, now + 1h, now - 24h), true},
    };
    for (const auto &row : rows) {
        fs::remove(file);
        ASSERT_TRUE(record({first}));
        const auto before = test::bytesOf(file);
        EXPECT_TRUE(record({row.next}));
        EXPECT_EQ(test::bytesOf(file) != before, row.isNews) << row.what;
        EXPECT_EQ(latest.read(row.next.observedAt).back() == row.next, row.isNews) << row.what;
    }
}

TEST_F(LatestLimitsTest, ReadsWhatIsSoundInAFileOfOthers) {
    const std::string good =
        R"({"kind": "session", "usedPct": 5, "resetsAt": null, "observedAt": "2026-11-18T11:06:40Z"})";
    const struct {
        const char *what;
        std::string bytes;
        std::size_t limits;
    } rows[] = {
        {"a good element", R"({"limits": [)" + good + "]}", 1},
        {"elements that are none",
         R"({"limits": [1, {}, [], {"kind": "daily", "usedPct": 5, "observedAt": "2026-11-18T11:06:40Z"},)" +
             good + "]}",
         1},
        {"a scoped one without a model",
         R"({"limits": [{"kind": "weekly_scoped", "usedPct": 5, "observedAt": "2026-11-18T11:06:40Z"}]})", 0},
        {"a negative percentage",
         R"({"limits": [{"kind": "session", "usedPct": -5, "observedAt": "2026-11-18T11:06:40Z"}]})", 0},
        {"observed in two minutes",
         R"({"limits": [{"kind": "session", "usedPct": 5, "observedAt": "2026-11-18T11:08:40Z"}]})", 0},
        {"observed in 1678",
         R"({"limits": [{"kind": "session", "usedPct": 5, "observedAt": "1678-11-18T11:08:40Z"}]})", 0},
        {"empty", "", 0},
        {"torn", R"({"limits": [)" + good, 0},
        {"more than a megabyte", R"({"limits": [)" + good + std::string(1 << 20, ' ') + "]}", 0},
    };
    for (const auto &row : rows) {
        test::writeFile(file, row.bytes);
        EXPECT_EQ(latest.read(now).size(), row.limits) << row.what;
        EXPECT_TRUE(record({observed(Kind::session, 7, now + 1h)})) << row.what;
        EXPECT_EQ(latest.read(now).front().usedPct, 7) << row.what;
    }
}

TEST_F(LatestLimitsTest, WritesNothingWithoutObservationsOrAFolder) {
    EXPECT_TRUE(record({}));
    EXPECT_FALSE(fs::exists(home.path() / "share"));
    test::writeFile(home.path() / "share", "a file");
    EXPECT_FALSE(record({observed(Kind::session, 7, now + 1h)}));
    EXPECT_EQ(latest.read(now).size(), 0U);
}

TEST(MergeLimits, KeepsTheLaterObservationOfEachLimit) {
    const Limit early = observed(Kind::session, 1, now + 1h, now);
    const Limit late = observed(Kind::session, 2, now + 1h, now + 1s);
    const Limit opus = observed(Kind::weeklyScoped, 3, now + 1h, now, "Opus");
    const Limit other = observed(Kind::weeklyScoped, 4, now + 1h, now, "Sonnet");
    const Limit weekly = observed(Kind::weekly, 5, now + 1h, now);
    std::vector limits{opus, late};
    mergeLimits(limits, std::vector{other, early, weekly});
    EXPECT_EQ(limits, (std::vector{late, weekly, opus, other}));
    Limit same = late;
    same.usedPct = 6;
    mergeLimits(limits, std::vector{same});
    EXPECT_EQ(limits.front(), same) << "the added one of two at the same time";
}

} // namespace
} // namespace burnwick
