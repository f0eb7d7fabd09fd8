// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Process.h"
#include "support/Outcome.h"
#include "support/StateFixture.h"

#include <QCoreApplication>

#include <algorithm>
#include <fstream>

#include <pthread.h>
#include <sys/stat.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::usageLine;

constexpr auto now = "2025-06-10T12:00:00.000Z";

// The tests of the whole program cover a new log's way to the window, those of the report the sums.

class UsageTrackerTest : public test::StateFixture {
protected:
    void add(const std::string &name, int input, std::chrono::hours age = 0h) const {
        m_home.add(name, usageLine(now, input, 0), m_clock.now() - age);
    }
    /// Starts with one log and waits for the history.
    void startWithALog() {
        add("a.jsonl", 1);
        m_state.start();
        ASSERT_TRUE(historyHas(1));
    }
    [[nodiscard]] bool runs(std::chrono::milliseconds interval) const {
        return std::ranges::count(m_scheduler.intervals(), interval) == 1;
    }
    /// Waits for the timer of that interval, and fires it; it fires once.
    [[nodiscard]] bool fires(std::chrono::milliseconds interval) {
        const bool isDue = waitFor([&] { return runs(interval); });
        if (isDue)
            m_scheduler.fire(interval);
        return isDue && !runs(interval);
    }
    /// Waits for the end of a refresh, also of one that changes nothing.
    void refresh() {
        bool done = false;
        const auto watch =
            QObject::connect(&m_state, &AppState::refreshed, &m_state, [&done] { done = true; });
        fireLocalTimer();
        ASSERT_TRUE(waitFor([&done] { return done; }));
        QObject::disconnect(watch);
    }
};

TEST_F(UsageTrackerTest, StartReturnsWithTheSessionAndOneReadingGivesItAndTheHistory) {
    m_home.add("a/old.jsonl", usageLine("2025-06-01T12:00:00.0Z", 7, 0), m_clock.now() - 48h);
    const std::string lines = usageLine("2025-06-10T11:00:00.0Z", 1'000'000, 100'000, 200'000, 5'000'000) +
                              usageLine("2025-06-10T11:10:00.0Z", 0, 0);
    m_home.add("a/new.jsonl", lines, m_clock.now());
    m_state.start();
    EXPECT_TRUE(usage().hasJSONLData);
    EXPECT_EQ(usage().sessionReadAt, m_clock.now());
    EXPECT_EQ(usage().historyReadAt, std::nullopt);
    EXPECT_EQ(usage().sessionTokens, (SessionTokens{1'000'000, 100'000, 200'000, 5'000'000}));
    EXPECT_EQ(usage().historicalData, HistoricalData());

    // Between the start's reading and the job's, so that only the job's can have it.
    m_home.add("a/new.jsonl", lines + usageLine("2025-06-10T11:20:00.0Z", 50, 0), m_clock.now());
    m_state.refreshLocalData();
    ASSERT_TRUE(historyHas(4));
    EXPECT_EQ(usage().historicalData.sessionCount, 2);
    EXPECT_EQ(usage().sessionTokens.input, 1'000'050);
    EXPECT_EQ(usage().historyReadAt, m_clock.now());
}

TEST_F(UsageTrackerTest, LogsAreReadInTheBackgroundAndOnlyIfTheTreeChanged) {
    startWithALog();
    const Instant readAt = m_clock.now();
    std::vector<std::int64_t> announced;
    QObject::connect(&m_state, &AppState::objectWillChange, &m_state,
                     [&] { announced.push_back(usage().sessionTokens.input); });
    m_clock.advance(1s);
    refresh();
    EXPECT_TRUE(announced.empty());
    EXPECT_EQ(usage().sessionReadAt, readAt);

    m_home.add("b.jsonl", "", m_clock.now() - 48h);
    fireLocalTimer();
    EXPECT_TRUE(announced.empty()) << "read before the job has ended";
    ASSERT_TRUE(waitFor([&] { return usage().historicalData.sessionCount == 2; }));
    EXPECT_EQ(announced, std::vector<std::int64_t>{1}) << "announced before the change, once for the reading";
    EXPECT_EQ(usage().lastUpdated, m_clock.now());
}

TEST_F(UsageTrackerTest, AFileThatGrowsOldLeavesTheSessionAndStaysInTheHistory) {
    add("young.jsonl", 1);
    add("old.jsonl", 2, 23h);
    m_state.start();
    ASSERT_TRUE(historyHas(2));
    EXPECT_EQ(usage().sessionTokens.input, 3);
    m_clock.advance(2h);
    refresh();
    EXPECT_EQ(usage().sessionTokens.input, 1);
    EXPECT_EQ(usage().historicalData.totalTokens.input, 3);
    m_clock.advance(-2h);
    refresh();
    EXPECT_EQ(usage().sessionTokens.input, 3) << "the clock was set back";
}

TEST_F(UsageTrackerTest, TheOldestLogIsTheRegularFileThatWasModifiedFirst) {
    add("a.jsonl", 1);
    const auto older = m_home.add("b.jsonl", "", m_clock.now() - 48h);
    const auto pipe = m_home.projects() / "c.jsonl";
    ASSERT_EQ(::mkfifo(pipe.c_str(), S_IRUSR), 0);
    test::setModified(pipe, m_clock.now() - 72h);
    m_state.start();
    EXPECT_EQ(usage().oldestLog, std::nullopt) << "before all files are known";
    ASSERT_TRUE(historyHas(1));
    EXPECT_EQ(usage().oldestLog, m_clock.now() - 48h);
    std::filesystem::remove(older);
    fireLocalTimer();
    EXPECT_TRUE(waitFor([this] { return usage().oldestLog == m_clock.now(); }));
}

TEST_F(UsageTrackerTest, RunsWithoutLogsAndFindsTheDirectoryWhenItAppears) {
    m_state.start();
    EXPECT_FALSE(usage().hasJSONLData);
    add("a.jsonl", 5);
    fireLocalTimer();
    ASSERT_TRUE(sessionHas(5));
    EXPECT_TRUE(usage().hasJSONLData);
    add("b.jsonl", 6);
    EXPECT_TRUE(sessionHas(11)) << "the directory is not watched";
}

TEST_F(UsageTrackerTest, WithoutAThreadTheNextRefreshReadsAndWatches) {
    add("a.jsonl", 1);
    // The network library starts its own thread with the first request, and leaks where it cannot.
    test::resultOf(m_account.http.send({HttpMethod::get, m_server.url()}));
    pthread_attr_t usual, impossible;
    ASSERT_EQ(::pthread_getattr_default_np(&usual), 0);
    ASSERT_EQ(::pthread_getattr_default_np(&impossible), 0);
    ASSERT_EQ(::pthread_attr_setstacksize(&impossible, std::size_t{1} << 50U), 0);
    ASSERT_EQ(::pthread_setattr_default_np(&impossible), 0);
    m_state.start();
    int detached = 0;
    platform::runDetachedThread([&detached] { ++detached; });
    EXPECT_EQ(::pthread_setattr_default_np(&usual), 0);
    EXPECT_EQ(detached, 1);
    EXPECT_EQ(usage().sessionTokens.input, 1);
    fireLocalTimer();
    EXPECT_TRUE(historyHas(1));
    add("b.jsonl", 2);
    EXPECT_TRUE(sessionHas(3)) << "the directory is not watched";
}

TEST_F(UsageTrackerTest, AFolderThatIsFilledAfterItAppearedIsReadOnceMore) {
    startWithALog();
    std::filesystem::create_directory(m_home.projects() / "new");
    ASSERT_TRUE(waitFor([&] { return runs(1500ms); }));
    add("new/b.jsonl", 2);
    ASSERT_TRUE(fires(1500ms));
    EXPECT_TRUE(sessionHas(3));
}

TEST_F(UsageTrackerTest, ALineAnywhereCountsAfterHalfASecondAlsoInANewFolder) {
    add("p/session/subagents/a.jsonl", 1);
    m_state.start();
    ASSERT_TRUE(historyHas(1));
    const auto file = m_home.projects() / "p/session/subagents/a.jsonl";
    for (int lines = 2; lines < 5; ++lines) {
        std::ofstream(file, std::ios::app) << usageLine(now, 1, 0);
        ASSERT_TRUE(waitFor([&] { return runs(500ms); })) << lines;
        EXPECT_EQ(usage().historicalData.messageCount, lines - 1);
        EXPECT_TRUE(fires(500ms) && historyHas(lines));
    }
    std::filesystem::create_directories(m_home.projects() / "new/folder");
    ASSERT_TRUE(fires(500ms));
    test::writeFile(m_home.projects() / "new/folder/b.jsonl", usageLine(now, 1, 0));
    EXPECT_TRUE(fires(500ms) && historyHas(5));
    std::filesystem::remove_all(m_home.projects() / "p");
    EXPECT_TRUE(fires(500ms) && historyHas(1));
}

TEST_F(UsageTrackerTest, OtherFoldersAreReadAtOnceAndLiveAndLeftOutWhenTheyAreRemoved) {
    startWithALog();
    const auto more = m_home.path() / "more";
    test::writeFile(more / "b.jsonl", usageLine(now, 2, 0));
    m_state.setLogFolders({m_home.projects(), more, more / "deeper", m_home.path() / "missing"});
    ASSERT_TRUE(historyHas(2));
    for (const auto &folder : {m_home.projects(), more}) {
        const auto messages = usage().historicalData.messageCount;
        test::writeFile(folder / "p" / "c.jsonl", usageLine(now, 4, 0));
        EXPECT_TRUE(fires(500ms) && historyHas(messages + 1)) << folder;
    }
    std::filesystem::remove_all(more); // as if it were unmounted
    EXPECT_TRUE(fires(500ms) && historyHas(2));
    test::writeFile(more / "b.jsonl", usageLine(now, 2, 0));
    fireLocalTimer();
    EXPECT_TRUE(historyHas(3));
    m_state.setLogFolders({m_home.projects()});
    EXPECT_TRUE(historyHas(2));
}

TEST_F(UsageTrackerTest, AChangeDuringAJobIsNotLost) {
    add("p/0.jsonl", 1);
    m_state.start();
    for (int i = 1; i < 40; i += 2) {
        for (const int file : {i, i + 1}) {
            add("p/" + std::to_string(file) + ".jsonl", 1);
            m_state.refreshLocalData();
        }
        ASSERT_TRUE(historyHas(i + 2));
    }
}

TEST_F(UsageTrackerTest, AHistoryIsKeptCurrentWithoutCountingAnythingTwice) {
    add("p/older.jsonl", 32, 2000h);
    add("p/old.jsonl", 1, 100h);
    add("p/today.jsonl", 2, 1h);
    m_state.start();
    ASSERT_TRUE(historyHas(3));
    const auto becomes = [this](std::int64_t messages, std::int64_t input, std::int64_t sessions) {
        fireLocalTimer();
        return historyHas(messages) && usage().historicalData.totalTokens.input == input &&
               usage().historicalData.sessionCount == sessions;
    };
    m_home.add("p/today.jsonl", usageLine(now, 2, 0) + usageLine(now, 4, 0), m_clock.now());
    EXPECT_TRUE(becomes(4, 39, 3));
    // An old session is resumed, whose lines were counted already.
    m_home.add("p/old.jsonl", usageLine(now, 1, 0) + usageLine(now, 8, 0), m_clock.now());
    EXPECT_TRUE(becomes(5, 47, 3));
}

TEST_F(UsageTrackerTest, TheTimeFilterRecomputesOncePerChangeAlsoDuringAJob) {
    const std::string lines = usageLine("2025-06-09T12:00:00.0Z", 1, 0) +
                              usageLine("2025-05-30T12:00:00.0Z", 2, 0) +
                              usageLine("2025-01-01T12:00:00.0Z", 4, 0);
    m_home.add("a.jsonl", lines, m_clock.now());
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
        EXPECT_EQ(usage().historicalData.totalTokens.input, row.input) << nameOf(row.filter);
        EXPECT_EQ(usage().lastUpdated == m_clock.now(), row.recomputes) << nameOf(row.filter);
    }
    m_home.add("a.jsonl", lines + usageLine(now, 8, 0), m_clock.now());
    fireLocalTimer();
    m_state.setTimeFilter(TimeFilter::sevenDays);
    m_calendar = Calendar::inZone("Asia/Tokyo");
    m_state.followTimeZone();
    ASSERT_TRUE(sessionHas(15));
    EXPECT_EQ(usage().historicalData.totalTokens.input, 9);
    EXPECT_EQ(usage().timeFilter, TimeFilter::sevenDays);
    EXPECT_EQ(usage().historicalData.peakHour, 21);
}

TEST_F(UsageTrackerTest, ANewDayAndAnotherZoneMoveStreaksAndHoursWithoutNewLogs) {
    startWithALog();
    EXPECT_EQ(usage().historicalData.currentStreak, 1);
    m_clock.advance(23h); // the file is still of the last day
    refresh();
    EXPECT_EQ(usage().historicalData.currentStreak, 1);
    EXPECT_EQ(usage().lastUpdated, m_clock.now());

    int announced = 0;
    QObject::connect(&m_state, &AppState::objectWillChange, &m_state, [&announced] { ++announced; });
    EXPECT_EQ(usage().historicalData.peakHour, 12);
    m_calendar = Calendar::inZone("Asia/Tokyo");
    m_state.refreshLocalData();
    EXPECT_EQ(usage().historicalData.peakHour, 21) << "not at once";
    EXPECT_TRUE(usage().calendar == m_calendar);
    EXPECT_GT(announced, 0);
    m_calendar = Calendar::inZone("UTC");
    m_state.wakeUp();
    EXPECT_EQ(usage().historicalData.peakHour, 12) << "not after waking";
}

TEST_F(UsageTrackerTest, AnotherRateRestartsBothTimersAndStoppingEndsAll) {
    using Intervals = std::vector<std::chrono::milliseconds>;
    m_preferences.setRefreshRate(RefreshRate::tenMin);
    EXPECT_EQ(m_scheduler.intervals(), Intervals()) << "before the start";
    startWithALog();
    for (const auto &[rate, interval] :
         {std::pair{RefreshRate::oneMin, 60s}, {RefreshRate::fiveMin, 300s}, {RefreshRate::tenMin, 600s}}) {
        m_preferences.setRefreshRate(rate);
        EXPECT_EQ(m_scheduler.intervals(), (Intervals{300s, interval}));
    }
    m_state.stop();
    m_preferences.setRefreshRate(RefreshRate::oneMin);
    EXPECT_EQ(m_scheduler.intervals(), Intervals()) << "after the end";
    int announced = 0;
    QObject::connect(&m_state, &AppState::objectWillChange, &m_state, [&announced] { ++announced; });
    add("b.jsonl", 2);
    m_calendar = Calendar::inZone("Asia/Tokyo");
    m_state.refreshLocalData();
    QCoreApplication::processEvents();
    EXPECT_EQ(announced, 0);
}

TEST(RecentSince, IsTheSameTimeOfYesterdayAlsoAfterANightOf25Hours) {
    EXPECT_EQ(recentSince(Calendar::inZone("Europe/Berlin"), test::at("2025-10-26T11:00:00Z")),
              test::at("2025-10-25T10:00:00Z"));
}

} // namespace
} // namespace burnwick
