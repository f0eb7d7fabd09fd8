// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "state/AppState.h"

#include "platform/Platform.h"
#include "prefs/PreferencesManager.h"
#include "prefs/UserDefaults.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"
#include "support/ManualScheduler.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QPointer>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::usageLine;

constexpr auto start = "2025-06-10T12:00:00.000Z";

class AppStateTest : public testing::Test {
protected:
    void begin() {
        m_state.emplace(AppState::Services{m_preferences, JSONLParser(m_home.path(), m_calendar, m_clock),
                                           m_calendar, m_clock, m_scheduler,
                                           platform::openDirectoryEventSource});
        m_state->start();
    }
    /// Once the history is in that has so many messages.
    bool historyHas(std::int64_t messages) {
        return waitFor([&] { return m_state->historicalData().messageCount == messages; });
    }

    test::ManualClock m_clock{start};
    test::LogHome m_home;
    Calendar m_calendar = Calendar::inZone("UTC");
    UserDefaults m_defaults{QString::fromStdString((m_home.path() / "settings.json").string())};
    PreferencesManager m_preferences{m_defaults};
    test::ManualScheduler m_scheduler;
    std::optional<AppState> m_state;
};

TEST_F(AppStateTest, ShowsTheRecentFiguresAtOnceAndTheHistorySoon) {
    m_home.add("a/old.jsonl", usageLine("2025-06-01T12:00:00.0Z", 7, 0), m_clock.now() - 48h);
    m_home.add("a/new.jsonl",
               usageLine("2025-06-10T11:00:00.0Z", 1'000'000, 100'000, 200'000, 5'000'000) +
                   usageLine("2025-06-10T11:10:00.0Z", 0, 0),
               m_clock.now());
    begin();
    EXPECT_TRUE(m_state->hasJSONLData());
    EXPECT_EQ(m_state->sessionTokens(), (SessionTokens{1'000'000, 100'000, 200'000, 5'000'000}));
    EXPECT_DOUBLE_EQ(m_state->sessionCost(), 6.75);
    EXPECT_DOUBLE_EQ(m_state->burnRateTokensPerMin(), 110'000);
    EXPECT_DOUBLE_EQ(m_state->projectedTodayCost(), 110'000 * 9e-6 * 1440);
    EXPECT_DOUBLE_EQ(m_state->projectedWeeklyCost(), m_state->projectedTodayCost() * 7);
    EXPECT_DOUBLE_EQ(m_state->projectedMonthlyCost(), m_state->projectedTodayCost() * 30);
    EXPECT_EQ(m_state->statusIndicator(), StatusIndicator::green);
    EXPECT_EQ(m_state->historicalData(), HistoricalData());

    ASSERT_TRUE(historyHas(3));
    EXPECT_EQ(m_state->historicalData().sessionCount, 2);
}

TEST_F(AppStateTest, RunsWithoutAnyLogs) {
    begin();
    EXPECT_FALSE(m_state->hasJSONLData());
    EXPECT_EQ(m_state->sessionTokens(), SessionTokens());
    // and finds the directory when it appears.
    m_home.add("a.jsonl", usageLine(start, 5, 0), m_clock.now());
    m_scheduler.fire(300s);
    EXPECT_EQ(m_state->sessionTokens().input, 5);
    ASSERT_TRUE(historyHas(1));
    m_home.add("b.jsonl", usageLine(start, 6, 0), m_clock.now());
    EXPECT_TRUE(waitFor([&] { return m_state->sessionTokens().input == 11; }))
        << "the directory is not watched";
}

TEST_F(AppStateTest, AnnouncesEachChangeBeforeIt) {
    m_home.add("a.jsonl", usageLine(start, 1, 0), m_clock.now());
    begin();
    ASSERT_TRUE(historyHas(1));
    std::vector<std::int64_t> seen;
    QObject::connect(&*m_state, &AppState::objectWillChange,
                     [&] { seen.push_back(m_state->sessionTokens().input); });

    m_scheduler.fire(300s);
    EXPECT_TRUE(seen.empty()) << "nothing changed";

    m_home.add("a.jsonl", usageLine(start, 9, 0), m_clock.now());
    m_state->refreshLocalData();
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front(), 1);
    EXPECT_EQ(m_state->sessionTokens().input, 9);
}

TEST_F(AppStateTest, ANewLogChangesTheFiguresWithoutATimer) {
    m_home.add("a.jsonl", usageLine(start, 1, 0), m_clock.now());
    begin();
    m_home.add("b.jsonl", usageLine(start, 2, 0), m_clock.now());
    EXPECT_TRUE(waitFor([&] { return m_state->sessionTokens().input == 3; }));
    EXPECT_TRUE(historyHas(2));
    EXPECT_EQ(m_state->historicalData().sessionCount, 2);
}

TEST_F(AppStateTest, AHistoryIsKeptCurrentWithoutCountingAnythingTwice) {
    m_home.add("p/old.jsonl", usageLine("2025-06-01T12:00:00.0Z", 1, 0), m_clock.now() - 100h);
    m_home.add("p/today.jsonl", usageLine(start, 2, 0), m_clock.now() - 1h);
    begin();
    ASSERT_TRUE(historyHas(2));

    m_home.add("p/today.jsonl", usageLine(start, 2, 0) + usageLine(start, 4, 0), m_clock.now());
    m_scheduler.fire(300s);
    ASSERT_TRUE(historyHas(3));
    EXPECT_EQ(m_state->historicalData().totalTokens.input, 7);

    // An old session is resumed: its lines were counted already.
    m_home.add("p/old.jsonl", usageLine("2025-06-01T12:00:00.0Z", 1, 0) + usageLine(start, 8, 0),
               m_clock.now());
    m_scheduler.fire(300s);
    ASSERT_TRUE(historyHas(4));
    EXPECT_EQ(m_state->historicalData().totalTokens.input, 15);
    EXPECT_EQ(m_state->historicalData().sessionCount, 2);

    // Days later everything is read anew.
    m_clock.advance(72h);
    m_home.add("p/later.jsonl", usageLine(start, 16, 0), m_clock.now());
    m_scheduler.fire(300s);
    ASSERT_TRUE(historyHas(5));
    EXPECT_EQ(m_state->historicalData().totalTokens.input, 31);
}

TEST_F(AppStateTest, TheTimeFilterRecomputesOncePerChange) {
    m_home.add("a.jsonl",
               usageLine("2025-06-09T12:00:00.0Z", 1, 0) + usageLine("2025-05-30T12:00:00.0Z", 2, 0) +
                   usageLine("2025-01-01T12:00:00.0Z", 4, 0),
               m_clock.now());
    begin();
    ASSERT_TRUE(historyHas(3));
    const struct {
        TimeFilter filter;
        std::int64_t input;
        bool recomputes;
    } rows[] = {{TimeFilter::all, 7, false},
                {TimeFilter::sevenDays, 1, true},
                {TimeFilter::sevenDays, 1, false},
                {TimeFilter::thirtyDays, 3, true},
                {TimeFilter::all, 7, true}};
    for (const auto &row : rows) {
        m_clock.advance(1s);
        m_state->setTimeFilter(row.filter);
        EXPECT_EQ(m_state->historicalData().totalTokens.input, row.input) << nameOf(row.filter);
        EXPECT_EQ(m_state->lastUpdated() == m_clock.now(), row.recomputes) << nameOf(row.filter);
    }
}

TEST_F(AppStateTest, ANewDayMovesTheStreakWithoutNewLogs) {
    m_home.add("a.jsonl", usageLine(start, 1, 0), m_clock.now());
    begin();
    ASSERT_TRUE(historyHas(1));
    EXPECT_EQ(m_state->historicalData().currentStreak, 1);
    m_clock.advance(23h); // the file still is of the last day
    m_scheduler.fire(300s);
    EXPECT_EQ(m_state->historicalData().currentStreak, 1);
    EXPECT_EQ(m_state->lastUpdated(), m_clock.now());
}

TEST_F(AppStateTest, TheLocalTimerFollowsThePreference) {
    for (const auto &[rate, interval] :
         {std::pair{RefreshRate::oneMin, 60s}, {RefreshRate::fiveMin, 300s}, {RefreshRate::tenMin, 600s}}) {
        m_preferences.setRefreshRate(rate);
        begin();
        EXPECT_EQ(m_scheduler.intervals(), std::vector<std::chrono::milliseconds>{interval});
    }
}

TEST_F(AppStateTest, StoppingEndsTimersAndWatching) {
    m_home.add("a.jsonl", usageLine(start, 1, 0), m_clock.now());
    begin();
    ASSERT_TRUE(historyHas(1));
    m_state->stop();
    EXPECT_TRUE(m_scheduler.intervals().empty());
    m_home.add("b.jsonl", usageLine(start, 2, 0), m_clock.now());
    m_state->refreshLocalData();
    EXPECT_EQ(m_state->sessionTokens().input, 1);
}

TEST_F(AppStateTest, MayGoWhileTheHistoryIsBeingLoaded) {
    for (int i = 0; i < 50; ++i)
        m_home.add("p/" + std::to_string(i) + ".jsonl", usageLine(start, 1, 0), m_clock.now());
    begin();
    m_state.reset();
    QCoreApplication::processEvents();
}

} // namespace
} // namespace burnwick
