// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeLoginManager.h"
#include "platform/Platform.h"
#include "platform/linux/bus/BusCall.h"
#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QCoreApplication>

#include <filesystem>
#include <fstream>
#include <sstream>

#include <sys/timerfd.h>

namespace burnwick {
namespace {

/// Returns this process's timer of the wall clock that the kernel cancels when that clock is set, or -1.
int cancellableTimer() {
    for (const auto &entry : std::filesystem::directory_iterator("/proc/self/fdinfo")) {
        std::ostringstream info;
        info << std::ifstream(entry.path()).rdbuf();
        if (info.str().find("clockid: 0\n") != std::string::npos &&
            info.str().find("settime flags: 03\n") != std::string::npos)
            return std::stoi(entry.path().filename());
    }
    return -1;
}

/// The tests' bus serves as the system's. Without the wait the next monitor would get this one's connection.
class SleepMonitorTest : public testing::Test {
protected:
    ~SleepMonitorTest() override {
        EXPECT_TRUE(waitFor([this] { return QDBusConnection(m_connection).isConnected(); }));
        QDBusConnection::disconnectFromBus(m_connection);
    }

    const QString m_connection = QStringLiteral("burnwick-system-bus");
    const test::EnvironmentVariable m_address{"DBUS_SYSTEM_BUS_ADDRESS",
                                              sessionBusOfTests().address().toUtf8()};
};

/// Only the system administrator can set the clock; an expiry is seen in the same way as a cancellation.
TEST_F(SleepMonitorTest, TheHandlerIsCalledForEachCancellationOfTheTimer) {
    int wakes = 0;
    auto monitor = platform::makeSleepMonitor();
    EXPECT_EQ(cancellableTimer(), -1);
    monitor->follow([&wakes] { ++wakes; });
    const int timer = cancellableTimer();
    ASSERT_NE(timer, -1);
    for (int expected = 1; expected <= 2; ++expected) {
        const itimerspec atOnce{{}, {0, 1}};
        ASSERT_EQ(::timerfd_settime(timer, TFD_TIMER_ABSTIME, &atOnce, nullptr), 0);
        EXPECT_TRUE(waitFor([&] { return wakes >= expected; }));
        QCoreApplication::processEvents();
        EXPECT_EQ(wakes, expected) << "called again without another cancellation";
    }
    monitor.reset();
    EXPECT_EQ(cancellableTimer(), -1) << "it is not closed";
}

TEST_F(SleepMonitorTest, TheHandlerIsCalledForTheLoginManagersWakesOnly) {
    const FakeLoginManager manager(sessionBusOfTests());
    const FakeLoginManager stranger(sessionBusOfTests(), QStringLiteral("org.example.Stranger"));
    int wakes = 0;
    const auto monitor = platform::makeSleepMonitor();
    monitor->follow([&wakes] { ++wakes; });
    const auto wakesAfter = [this, &wakes](const FakeLoginManager &sender, const QVariant &starting) {
        const int before = wakes;
        sender.prepareForSleep(starting);
        const auto call = callMessageBus(QDBusConnection(m_connection), QStringLiteral("GetId"), {});
        EXPECT_TRUE(waitFor([&call] { return call.isFinished(); }));
        QCoreApplication::processEvents();
        return wakes - before;
    };
    ASSERT_TRUE(waitFor([&] { return wakesAfter(manager, false) == 1; })) << "does not listen";
    EXPECT_EQ(wakesAfter(manager, true), 0) << "before a sleep";
    EXPECT_EQ(wakesAfter(stranger, false), 0);
    EXPECT_EQ(wakesAfter(manager, QString()), 0) << "another type";
    EXPECT_EQ(wakesAfter(manager, false), 1);
}

} // namespace
} // namespace burnwick
