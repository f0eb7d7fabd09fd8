// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/UpdateChecker.h"

#include "support/ManualScheduler.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <functional>
#include <thread>
#include <vector>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using State = UpdateChecker::State;

class UpdateCheckerTest : public testing::Test {
protected:
    UpdateCheckerTest() {
        QObject::connect(&m_checker, &UpdateChecker::stateChanged, &m_checker, [this](State state) {
            EXPECT_EQ(state, m_checker.state());
            EXPECT_EQ(std::this_thread::get_id(), m_mainThread);
            m_announced.push_back(state);
        });
    }

    std::thread::id m_mainThread = std::this_thread::get_id();
    test::ManualScheduler m_scheduler;
    UpdateChecker m_checker{m_scheduler};
    std::vector<State> m_announced;
};

TEST_F(UpdateCheckerTest, EachEventLeadsToItsStateFromAnyOther) {
    const struct {
        const char *event;
        std::function<void()> happen;
        State state;
        bool reverts;
    } events[] = {
        {"assigned", [this] { m_checker.setState(State::checking); }, State::checking, false},
        {"none", [this] { m_checker.updaterDidNotFindUpdate(); }, State::upToDate, true},
        {"none, because", [this] { m_checker.updaterDidNotFindUpdate(QStringLiteral("why")); },
         State::upToDate, true},
        {"found", [this] { m_checker.updaterDidFindValidUpdate({QStringLiteral("2.0")}); }, State::available,
         false},
        {"aborted", [this] { m_checker.updaterDidAbort(QStringLiteral("why")); }, State::idle, false},
    };
    for (const auto &before : events) {
        for (const auto &event : events) {
            SCOPED_TRACE(std::string(event.event) + " after " + before.event);
            before.happen();
            QCoreApplication::processEvents();
            m_scheduler.advance(4s);
            event.happen();
            QCoreApplication::processEvents();
            EXPECT_EQ(m_checker.state(), event.state);
            m_scheduler.advance(4s);
            EXPECT_EQ(m_checker.state(), event.state) << "changed by the return of the state before";
            m_scheduler.advance(1s);
            EXPECT_EQ(m_checker.state(), event.reverts ? State::idle : event.state);
            EXPECT_TRUE(m_scheduler.intervals().empty());
        }
    }
}

TEST_F(UpdateCheckerTest, CallsFromOtherThreadsTakeEffectOnTheMainOne) {
    std::vector<std::jthread> callers;
    for (int i = 0; i < 4; ++i)
        callers.emplace_back([this] {
            for (int call = 0; call < 50; ++call) {
                m_checker.updaterDidNotFindUpdate();
                m_checker.updaterDidAbort(QStringLiteral("why"));
                m_checker.updaterDidFindValidUpdate({QStringLiteral("2.0")});
            }
        });
    callers.clear();
    EXPECT_EQ(m_checker.state(), State::idle) << "before the main thread had a turn";
    ASSERT_TRUE(waitFor([this] { return m_announced.size() >= 3; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_checker.state(), State::available);
    EXPECT_TRUE(m_scheduler.intervals().empty());
}

TEST(UpdateCheckerGoingTest, NothingComesAfterItsEnd) {
    test::ManualScheduler scheduler;
    {
        UpdateChecker checker(scheduler);
        checker.updaterDidNotFindUpdate();
        QCoreApplication::processEvents();
        checker.updaterDidNotFindUpdate();
    }
    EXPECT_TRUE(scheduler.intervals().empty());
    QCoreApplication::processEvents();
}

} // namespace
} // namespace burnwick
