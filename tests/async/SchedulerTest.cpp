// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "async/Scheduler.h"

#include "support/ManualClock.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QCoreApplication>
#include <QTimer>

#include <chrono>
#include <memory>
#include <utility>
#include <vector>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::ManualClock;

struct SchedulerTest : testing::Test {
    /// Runs the event loop until all timers that are due have fired.
    static void settle() {
        QTimer last;
        last.setSingleShot(true);
        last.start(0);
        while (last.isActive())
            QCoreApplication::processEvents();
    }

    ManualClock clock{"2025-06-10T12:00:00.000Z"};
    EventLoopScheduler scheduler{clock};
};

TEST_F(SchedulerTest, TimersDueDuringASleepFireOnceAfterIt) {
    const struct {
        const char *what;
        std::chrono::nanoseconds asleep;
        int quarterHours, days;
    } rows[] = {
        {"too short a sleep", 14min, 0, 0},
        {"one of both is due", 8h, 1, 0},
        {"both are, many times over", 240h, 1, 1},
        {"the clock was put back", -8h, 0, 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        int quarterHours = 0;
        int days = 0;
        const auto often = scheduler.repeat(15min, [&] { ++quarterHours; });
        const auto seldom = scheduler.repeat(24h, [&] { ++days; });
        clock.advance(row.asleep);
        scheduler.catchUp();
        scheduler.catchUp();
        EXPECT_EQ(quarterHours + days, 0) << "not within the call";
        settle();
        EXPECT_EQ(quarterHours, row.quarterHours);
        EXPECT_EQ(days, row.days);
        // From now on a whole interval has to pass again.
        scheduler.catchUp();
        settle();
        EXPECT_EQ(quarterHours, row.quarterHours);
    }
}

TEST_F(SchedulerTest, ATimerThatFiresCorrectsTheOthers) {
    int days = 0;
    const auto seldom = scheduler.repeat(24h, [&] { ++days; });
    int fired = 0;
    std::unique_ptr<RepeatingTimer> often = scheduler.repeat(1ms, [&] {
        often.reset();
        ++fired;
    });
    clock.advance(25h);
    EXPECT_TRUE(waitFor([&] { return days == 1; }));
    EXPECT_EQ(fired, 1) << "it destroyed itself";
}

TEST_F(SchedulerTest, NoTimerFiresEarly) {
    using std::chrono::steady_clock;
    std::vector<std::unique_ptr<RepeatingTimer>> timers;
    std::size_t fired = 0;
    for (const auto interval : {210ms, 330ms, 430ms, 530ms, 610ms, 770ms, 890ms, 930ms}) {
        timers.push_back(
            scheduler.repeat(interval, [&, start = steady_clock::now(), interval, first = true]() mutable {
                if (!std::exchange(first, false))
                    return;
                EXPECT_GE(steady_clock::now() - start, interval);
                ++fired;
            }));
    }
    EXPECT_TRUE(waitFor([&] { return fired == timers.size(); }));
}

} // namespace
} // namespace burnwick
