// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeLoginManager.h"
#include "platform/Platform.h"
#include "platform/linux/bus/SessionBusAddress.h"
#include "support/EnvironmentVariable.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QElapsedTimer>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusPendingCall>
#include <QtNetwork/QLocalServer>

namespace burnwick {
namespace {

const QString systemBus = QStringLiteral("burnwick-system-bus"); ///< the monitor's connection

/// What was sent to the monitor before, was handled after this.
void letThrough() {
    const auto call = QDBusConnection(systemBus).asyncCall(
        QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/"),
                                       QStringLiteral("org.freedesktop.DBus"), QStringLiteral("GetId")));
    EXPECT_TRUE(waitFor([&call] { return call.isFinished(); }));
    QCoreApplication::processEvents();
}

TEST(SleepMonitor, TheLoginManagersWakesAreHeardAndNobodyElses) {
    const test::EnvironmentVariable address("DBUS_SYSTEM_BUS_ADDRESS",
                                            sessionBusOfTests().address().toUtf8());
    const FakeLoginManager manager(sessionBusOfTests());
    const FakeLoginManager stranger(sessionBusOfTests(), QStringLiteral("org.example.Stranger"));
    int wakes = 0;
    const auto monitor = platform::makeSleepMonitor();
    monitor->follow([&wakes] { ++wakes; });
    EXPECT_EQ(wakes, 0);
    // Once it listens.
    ASSERT_TRUE(waitFor([&] {
        manager.prepareForSleep(false);
        return wakes > 0;
    }));
    letThrough();

    const struct {
        const char *what;
        const FakeLoginManager &sender;
        QVariant starting;
        int wakes;
    } rows[] = {
        {"going to sleep", manager, true, 0},       {"woken", manager, false, 1},
        {"woken again", manager, false, 1},         {"not the manager", stranger, false, 0},
        {"of another type", manager, QString(), 0}, {"and once more", manager, false, 1},
    };
    for (const auto &row : rows) {
        wakes = 0;
        row.sender.prepareForSleep(row.starting);
        letThrough();
        EXPECT_EQ(wakes, row.wakes) << row.what;
    }
    QDBusConnection::disconnectFromBus(systemBus);
}

TEST(SleepMonitor, ASystemBusThatSaysNothingHoldsNobodyUp) {
    const QTemporaryDir directory;
    const QString path = directory.filePath(QStringLiteral("silent"));
    QLocalServer silent; // takes connections, and says nothing
    ASSERT_TRUE(silent.listen(path));
    const test::EnvironmentVariable address("DBUS_SYSTEM_BUS_ADDRESS", "unix:path=" + path.toUtf8());
    // A call that waited would take all of this limit each time; a busy machine is that slow once at most.
    EXPECT_TRUE(waitFor([] {
        QElapsedTimer time;
        time.start();
        const auto monitor = platform::makeSleepMonitor();
        monitor->follow([] {});
        // Connections by name are not held up meanwhile either.
        EXPECT_TRUE(sessionBusOfTests().connect(QStringLiteral("another")).isConnected());
        QDBusConnection::disconnectFromBus(QStringLiteral("another"));
        return std::chrono::milliseconds(time.elapsed()) < silentBusLimit;
    }));
}

} // namespace
} // namespace burnwick
