// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/UpdateChecker.h"
#include "update/UserDriverDelegate.h"

#include "support/ManualScheduler.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <thread>
#include <vector>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using State = UpdateChecker::State;

class UpdateCheckerTest : public testing::Test {
protected:
    test::ManualScheduler m_scheduler;
    UpdateChecker m_checker{m_scheduler};
};

TEST_F(UpdateCheckerTest, CallsFromOtherThreadsTakeEffectInOrderOnTheMainThread) {
    std::vector<State> announced;
    QObject::connect(&m_checker, &UpdateChecker::stateChanged, [&](State state) {
        EXPECT_EQ(state, m_checker.state());
        announced.push_back(state);
    });
    std::thread([this] {
        m_checker.updaterDidNotFindUpdate();
        m_checker.updaterDidNotFindUpdate(QStringLiteral("why"));
        m_checker.updaterDidFindValidUpdate({QStringLiteral("2.0")});
    }).join();
    EXPECT_EQ(m_checker.state(), State::idle) << "before the main thread's event loop ran";
    QCoreApplication::processEvents();
    EXPECT_EQ(announced, (std::vector{State::upToDate, State::available}));
}

TEST(UserDriverDelegateTest, ACheckByTheUserActivatesTheApplicationAndAnotherNotifies) {
    QStringList events;
    UserDriverDelegate delegate{[&] { events.append(QStringLiteral("activated")); },
                                [&](const QString &version) { events.append(version); }};
    delegate.standardUserDriverWillHandleShowingUpdate(true, {QStringLiteral("2.0")}, {true});
    delegate.standardUserDriverWillHandleShowingUpdate(false, {QStringLiteral("3.0")}, {false});
    EXPECT_TRUE(events.isEmpty());
    QCoreApplication::processEvents();
    EXPECT_EQ(events, QStringList({QStringLiteral("activated"), QStringLiteral("3.0")}));
}

} // namespace
} // namespace burnwick
