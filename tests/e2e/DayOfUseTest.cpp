// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "platform/FakeLoginManager.h"

#include <QDBusArgument>
#include <QDBusConnectionInterface>
#include <QDBusReply>

using namespace std::chrono_literals;

namespace burnwick {
namespace {

using test::usage;

const auto serverName = QStringLiteral("org.freedesktop.Notifications");
const auto observerName = QStringLiteral("dunst-observer");

/// Returns the folder of the services.
QString writeService(const std::filesystem::path &directory, const QString &display) {
    const auto settings = directory / "dunstrc";
    test::writeFile(settings, "[global]\nmarkup = full\nformat = \"%s: %b\"\n");
    const auto services = directory / "services";
    test::writeFile(services / "dunst.service",
                    "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=/usr/bin/env DISPLAY=" +
                        display.toStdString() + " dunst -config " + settings.string() + "\n");
    return QString::fromStdString(services.string());
}

/// A message bus that starts dunst, a real notification server, on a virtual display at the first call.
class NotifyingSession {
protected:
    ~NotifyingSession() {
        endServer();
        QDBusConnection::disconnectFromBus(observerName);
    }

    [[nodiscard]] bool serverRuns() const { return m_observer.interface()->isServiceRegistered(serverName); }
    void endServer() const {
        const QDBusReply<uint> process = m_observer.interface()->servicePid(serverName);
        if (process.isValid())
            ::kill(static_cast<pid_t>(process.value()), SIGKILL);
    }
    /// Removes all notifications from the display. Returns all since the server's start, in order, each as
    /// title and body in markup: "Quota Alert: You've used 84%".
    [[nodiscard]] QStringList closeAll() const {
        callServer(QStringLiteral("NotificationCloseAll"));
        const auto history = callServer(QStringLiteral("NotificationListHistory")).arguments();
        QStringList texts;
        for (const QVariantMap &entry : qdbus_cast<QList<QVariantMap>>(history.value(0)))
            texts.prepend(entry.value(QStringLiteral("message")).toString());
        return texts;
    }
    QDBusMessage callServer(const QString &method) const {
        QDBusMessage message =
            QDBusMessage::createMethodCall(serverName, QStringLiteral("/org/freedesktop/Notifications"),
                                           QStringLiteral("org.dunstproject.cmd0"), method);
        message.setAutoStartService(false);
        return m_observer.call(message);
    }

    test::VirtualDisplay m_serversDisplay;
    test::TemporaryDirectory m_directory;
    PrivateBus m_bus{writeService(m_directory.path(), m_serversDisplay.name())};
    QDBusConnection m_observer = m_bus.connect(observerName);
};

/// The real program over hours, beside a real notification server.
class DayOfUseTest : protected NotifyingSession, public test::TimedFixture {
protected:
    DayOfUseTest()
        : TimedFixture(m_bus) {
        // The timer, not the file monitor, finds a new log in a known project.
        writeSettings(m_server.url(), {{QStringLiteral("refreshRate"), 60}});
    }

    /// Adds a usage line with the current time.
    void log(const std::string &file, int input) {
        m_home.add(file, test::usageLine(stamp(0s).toStdString(), input, 0),
                   std::chrono::system_clock::now());
    }
    /// Whether exactly these notifications were displayed since the notification server started.
    testing::AssertionResult areShown(const QStringList &expected) const {
        if (waitFor([&] { return closeAll() == expected; }))
            return testing::AssertionSuccess();
        return testing::AssertionFailure() << "shown are " << closeAll().join(u'\n').toStdString();
    }
};

TEST_F(DayOfUseTest, AlertsComeOncePerWindowAndTheWindowResets) {
    const auto untilFullMinute = std::chrono::seconds(60 - m_now.time().second());
    const QByteArray first = stamp(2h + untilFullMinute);
    // The service computes the instant for each answer; it varies by a second.
    const QByteArray firstAgain = stamp(2h + untilFullMinute - 1s);
    const QByteArray second = stamp(7h + untilFullMinute);
    m_server.script("/api/oauth/usage", {usage(67, first), usage(84, firstAgain), usage(91, first),
                                         usage(104, firstAgain), usage(3, second)});
    log("project/morning.jsonl", 1'000'000);
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(itemShows("1.0M | $3.00 | s67%  ●"));
    EXPECT_TRUE(areShown({}));

    log("another-project/noon.jsonl", 400'000);
    EXPECT_TRUE(itemShows("1.4M | $4.20 | s67%  ●")) << "the file monitor missed a new project";
    log("project/noon.jsonl", 100'000);

    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s84%  ●"));
    EXPECT_TRUE(areShown({QStringLiteral("Quota Alert: You've used 84% of your 5-hour quota.")}));
    endServer();
    ASSERT_TRUE(waitFor([this] { return !serverRuns(); }));
    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s91%  ●"));
    EXPECT_FALSE(serverRuns()) << "the alert was sent again";

    pass(5min);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s104%  ●"));
    QString limit;
    EXPECT_TRUE(waitFor([&] {
        limit = closeAll().join(u'\n');
        return !limit.isEmpty();
    }));
    EXPECT_TRUE(limit.startsWith(
        QStringLiteral("Rate Limit Reached: You've hit your rate limit. Quota resets in 1h 4")))
        << limit.toStdString();

    pass(2h);
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s3%  ●"));
    const QString reset = QStringLiteral("Session Reset: Your 5-hour quota has reset. You're ready to go!");
    EXPECT_TRUE(areShown({limit, reset}));
    EXPECT_TRUE(endsAt(SIGTERM));

    // The next start has the record of the sent alerts.
    m_server.script("/api/oauth/usage", {usage(84, first)});
    m_watcher.dropName();
    ASSERT_TRUE(startProgram());
    EXPECT_TRUE(itemShows("1.5M | $4.50 | s84%  ●"));
    EXPECT_TRUE(areShown({limit, reset}));
}

TEST_F(DayOfUseTest, AWakeUpRefreshesAtOnceAndRetriesUntilTheNetworkIsBack) {
    m_server.script("/api/oauth/usage",
                    {usage(67), usageEnding(test::ScriptedAnswer::Ending::cut), usage(3)});
    set({{"DBUS_SYSTEM_BUS_ADDRESS", m_bus.address()},
         {"FAKETIME_DONT_FAKE_MONOTONIC", QStringLiteral("1")}});
    const FakeLoginManager manager(m_bus);
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(itemShows("0 | $0.00 | s67%  ●"));

    pass(8h); // of the wall clock alone: timers do not advance during a sleep
    EXPECT_TRUE(waitFor([&] {
        manager.prepareForSleep(false);
        return usageRequests() > 1;
    }));
    EXPECT_TRUE(waitFor([&] { return usageRequests() == 3; }));
    EXPECT_TRUE(itemShows("0 | $0.00 | s3%  ●"));
}

} // namespace
} // namespace burnwick
