// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Process.h"
#include "support/Outcome.h"
#include "support/StateFixture.h"

#include <QCoreApplication>

#include <pthread.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::usageLine;

constexpr auto now = "2025-06-10T12:00:00.000Z";

// That a new log changes the figures at once is seen by the whole program's tests.

class AppStateTest : public test::StateFixture {};

TEST_F(AppStateTest, ShowsTheRecentFiguresAtOnceAndTheHistorySoon) {
    m_home.add("a/old.jsonl", usageLine("2025-06-01T12:00:00.0Z", 7, 0), m_clock.now() - 48h);
    m_home.add("a/new.jsonl",
               usageLine("2025-06-10T11:00:00.0Z", 1'000'000, 100'000, 200'000, 5'000'000) +
                   usageLine("2025-06-10T11:10:00.0Z", 0, 0),
               m_clock.now());
    m_state.start();
    EXPECT_TRUE(m_state.hasJSONLData());
    EXPECT_EQ(m_state.sessionTokens(), (SessionTokens{1'000'000, 100'000, 200'000, 5'000'000}));
    EXPECT_DOUBLE_EQ(m_state.sessionCost(), 6.75);
    EXPECT_DOUBLE_EQ(m_state.burnRateTokensPerMin(), 110'000);
    EXPECT_DOUBLE_EQ(m_state.projectedTodayCost(), 110'000 * 9e-6 * 1440);
    EXPECT_DOUBLE_EQ(m_state.projectedWeeklyCost(), m_state.projectedTodayCost() * 7);
    EXPECT_DOUBLE_EQ(m_state.projectedMonthlyCost(), m_state.projectedTodayCost() * 30);
    EXPECT_EQ(m_state.statusIndicator(), StatusIndicator::green);
    EXPECT_EQ(m_state.historicalData(), HistoricalData());

    ASSERT_TRUE(historyHas(3));
    EXPECT_EQ(m_state.historicalData().sessionCount, 2);
}

TEST_F(AppStateTest, RunsWithoutAnyLogs) {
    m_state.start();
    EXPECT_FALSE(m_state.hasJSONLData());
    EXPECT_EQ(m_state.sessionTokens(), SessionTokens());
    // and finds the directory when it appears.
    m_home.add("a.jsonl", usageLine(now, 5, 0), m_clock.now());
    fireLocalTimer();
    EXPECT_EQ(m_state.sessionTokens().input, 5);
    ASSERT_TRUE(historyHas(1));
    m_home.add("b.jsonl", usageLine(now, 6, 0), m_clock.now());
    EXPECT_TRUE(waitFor([&] { return m_state.sessionTokens().input == 11; }))
        << "the directory is not watched";
}

TEST_F(AppStateTest, AnnouncesEachChangeBeforeIt) {
    m_home.add("a.jsonl", usageLine(now, 1, 0), m_clock.now());
    m_state.start();
    ASSERT_TRUE(historyHas(1));
    std::vector<std::int64_t> seen;
    QObject::connect(&m_state, &AppState::objectWillChange,
                     [&] { seen.push_back(m_state.sessionTokens().input); });

    fireLocalTimer();
    EXPECT_TRUE(seen.empty()) << "nothing changed";

    m_home.add("a.jsonl", usageLine(now, 9, 0), m_clock.now());
    m_state.refreshLocalData();
    ASSERT_FALSE(seen.empty());
    EXPECT_EQ(seen.front(), 1);
    EXPECT_EQ(m_state.sessionTokens().input, 9);
}

TEST_F(AppStateTest, WithoutThreadsForThemTheHistoryAndTheWatchComeLater) {
    m_home.add("a.jsonl", usageLine(now, 1, 0), m_clock.now());
    // The network library starts its own thread with the first request, and leaks where it cannot.
    test::resultOf(m_account.http.send({HttpMethod::get, m_server.url()}));
    pthread_attr_t usual, impossible;
    ASSERT_EQ(::pthread_getattr_default_np(&usual), 0);
    ASSERT_EQ(::pthread_getattr_default_np(&impossible), 0);
    ASSERT_EQ(::pthread_attr_setstacksize(&impossible, std::size_t{1} << 50U), 0);
    ASSERT_EQ(::pthread_setattr_default_np(&impossible), 0);
    m_state.start();
    int unawaited = 0;
    platform::runDetachedThread([&unawaited] { ++unawaited; });
    EXPECT_EQ(::pthread_setattr_default_np(&usual), 0);
    EXPECT_EQ(unawaited, 1);
    EXPECT_EQ(m_state.sessionTokens().input, 1);
    fireLocalTimer();
    EXPECT_TRUE(waitFor([&] { return m_state.historicalData().totalTokens.input == 1; }));
    m_home.add("b.jsonl", usageLine(now, 2, 0), m_clock.now());
    EXPECT_TRUE(waitFor([&] { return m_state.sessionTokens().input == 3; })) << "it does not watch";
}

TEST_F(AppStateTest, AFolderThatIsFilledAfterItAppearedIsLookedAtOnceMore) {
    m_home.add("a.jsonl", usageLine(now, 1, 0), m_clock.now());
    m_state.start();
    std::filesystem::create_directory(m_home.projects() / "new");
    ASSERT_TRUE(waitFor([&] { return m_scheduler.intervals().size() == 3; }));
    m_home.add("new/b.jsonl", usageLine(now, 2, 0), m_clock.now());
    m_scheduler.fire(1500ms);
    EXPECT_EQ(m_state.sessionTokens().input, 3);
    EXPECT_EQ(m_scheduler.intervals().size(), 2U);
}

TEST_F(AppStateTest, ADirectoryInTheWatchedOnesPlaceIsWatched) {
    m_home.add("a.jsonl", usageLine(now, 1, 0), m_clock.now());
    m_state.start();
    std::filesystem::rename(m_home.projects(), m_home.path() / "moved");
    m_home.add("b.jsonl", usageLine(now, 2, 0), m_clock.now());
    // The monitor's thread may not have seen the move yet; each refresh tries to watch anew.
    EXPECT_TRUE(waitFor([&, i = 0]() mutable {
        fireLocalTimer();
        m_home.add("c" + std::to_string(++i) + ".jsonl", "", m_clock.now());
        return m_scheduler.intervals().size() == 3;
    }));
}

TEST_F(AppStateTest, AFolderThatReplacesOneThatWasMovedIsWatchedFromTheNextRefreshOn) {
    m_home.add("a.jsonl", usageLine(now, 1, 0), m_clock.now());
    m_state.start();
    std::filesystem::rename(m_home.path() / ".claude", m_home.path() / "moved");
    m_home.add("b.jsonl", usageLine(now, 2, 0), m_clock.now());
    fireLocalTimer();
    EXPECT_EQ(m_state.sessionTokens().input, 2);
    m_home.add("c.jsonl", usageLine(now, 3, 0), m_clock.now());
    EXPECT_TRUE(waitFor([this] { return m_state.sessionTokens().input == 5; }));
}

TEST_F(AppStateTest, AChangeDuringALoadIsNotLost) {
    m_home.add("p/0.jsonl", usageLine(now, 1, 0), m_clock.now());
    m_state.start();
    for (int i = 1; i < 40; i += 2) {
        for (const int file : {i, i + 1}) {
            m_home.add("p/" + std::to_string(file) + ".jsonl", usageLine(now, 1, 0), m_clock.now());
            m_state.refreshLocalData();
        }
        ASSERT_TRUE(historyHas(i + 2));
    }
}

TEST_F(AppStateTest, AHistoryIsKeptCurrentWithoutCountingAnythingTwice) {
    m_home.add("p/older.jsonl", usageLine("2025-05-01T12:00:00.0Z", 32, 0), m_clock.now() - 2000h);
    m_home.add("p/old.jsonl", usageLine("2025-06-01T12:00:00.0Z", 1, 0), m_clock.now() - 100h);
    m_home.add("p/today.jsonl", usageLine(now, 2, 0), m_clock.now() - 1h);
    m_state.start();
    ASSERT_TRUE(historyHas(3));

    m_home.add("p/today.jsonl", usageLine(now, 2, 0) + usageLine(now, 4, 0), m_clock.now());
    fireLocalTimer();
    ASSERT_TRUE(historyHas(4));
    EXPECT_EQ(m_state.historicalData().totalTokens.input, 39);
    EXPECT_EQ(m_state.historicalData().sessionCount, 3);

    // An old session is resumed: its lines were counted already.
    m_home.add("p/old.jsonl", usageLine("2025-06-01T12:00:00.0Z", 1, 0) + usageLine(now, 8, 0),
               m_clock.now());
    fireLocalTimer();
    ASSERT_TRUE(historyHas(5));
    EXPECT_EQ(m_state.historicalData().totalTokens.input, 47);
    EXPECT_EQ(m_state.historicalData().sessionCount, 3);

    // Days later everything is read anew, even what changed without a trace.
    m_home.add("p/older.jsonl", usageLine("2025-05-01T12:00:00.0Z", 64, 0), m_clock.now() - 2000h);
    m_clock.advance(72h);
    m_home.add("p/later.jsonl", usageLine(now, 16, 0), m_clock.now());
    fireLocalTimer();
    ASSERT_TRUE(historyHas(6));
    EXPECT_EQ(m_state.historicalData().totalTokens.input, 95);
}

TEST_F(AppStateTest, TheTimeFilterRecomputesOncePerChange) {
    m_home.add("a.jsonl",
               usageLine("2025-06-09T12:00:00.0Z", 1, 0) + usageLine("2025-05-30T12:00:00.0Z", 2, 0) +
                   usageLine("2025-01-01T12:00:00.0Z", 4, 0),
               m_clock.now());
    m_state.start();
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
        m_state.setTimeFilter(row.filter);
        EXPECT_EQ(m_state.historicalData().totalTokens.input, row.input) << nameOf(row.filter);
        EXPECT_EQ(m_state.lastUpdated() == m_clock.now(), row.recomputes) << nameOf(row.filter);
    }
}

TEST_F(AppStateTest, ANewDayMovesTheStreakWithoutNewLogs) {
    m_home.add("a.jsonl", usageLine(now, 1, 0), m_clock.now());
    m_state.start();
    ASSERT_TRUE(historyHas(1));
    EXPECT_EQ(m_state.historicalData().currentStreak, 1);
    m_clock.advance(23h); // the file still is of the last day
    fireLocalTimer();
    EXPECT_EQ(m_state.historicalData().currentStreak, 1);
    EXPECT_EQ(m_state.lastUpdated(), m_clock.now());
}

TEST_F(AppStateTest, AnotherTimeZoneMovesDaysHoursAndPeriods) {
    // Early on June 4 in Tokyo: within the last seven days of both zones.
    m_home.add("a.jsonl", usageLine("2025-06-03T22:00:00.000Z", 1, 0), m_clock.now());
    m_state.start();
    ASSERT_TRUE(historyHas(1));
    EXPECT_EQ(m_state.historicalData().peakHour, 22);
    const auto firstDay = [this] { return m_state.historicalData().dailyActivity.begin()->first; };
    const LocalDay before = firstDay();
    int announced = 0;
    QObject::connect(&m_state, &AppState::objectWillChange, &m_state, [&announced] { ++announced; });

    m_calendar = Calendar::inZone("Asia/Tokyo");
    fireLocalTimer();
    EXPECT_EQ(m_state.historicalData().peakHour, 7);
    EXPECT_EQ(firstDay() - before, std::chrono::days(1));
    EXPECT_TRUE(m_state.calendar() == m_calendar);
    EXPECT_GT(announced, 0);
}

TEST_F(AppStateTest, AnotherRateStartsBothTimersAnewAndChangesTheLocalOne) {
    using Intervals = std::vector<std::chrono::milliseconds>;
    m_preferences.setRefreshRate(RefreshRate::tenMin);
    EXPECT_EQ(m_scheduler.intervals(), Intervals()) << "before the start";
    m_state.start();
    for (const auto &[rate, interval] :
         {std::pair{RefreshRate::oneMin, 60s}, {RefreshRate::fiveMin, 300s}, {RefreshRate::tenMin, 600s}}) {
        m_preferences.setRefreshRate(rate);
        EXPECT_EQ(m_scheduler.intervals(), (Intervals{300s, interval}));
    }
    m_state.stop();
    m_preferences.setRefreshRate(RefreshRate::oneMin);
    EXPECT_EQ(m_scheduler.intervals(), Intervals()) << "after the end";
}

TEST_F(AppStateTest, StoppingEndsTimersAndWatching) {
    m_home.add("a.jsonl", usageLine(now, 1, 0), m_clock.now());
    m_state.start();
    ASSERT_TRUE(historyHas(1));
    m_state.stop();
    EXPECT_TRUE(m_scheduler.intervals().empty());
    m_home.add("b.jsonl", usageLine(now, 2, 0), m_clock.now());
    m_state.refreshLocalData();
    EXPECT_EQ(m_state.sessionTokens().input, 1);
}

} // namespace
} // namespace burnwick
