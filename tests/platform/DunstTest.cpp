// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/LinuxNotificationCenter.h"
#include "support/LogTreeFixture.h"
#include "support/PrivateBus.h"
#include "support/VirtualDisplay.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QStandardPaths>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusReply>
#include <QtDBus/QDBusVariant>

#include <csignal>
#include <optional>
#include <vector>

namespace burnwick {
namespace {

using Authorization = NotificationCenter::Authorization;

const QString serverName = QStringLiteral("org.freedesktop.Notifications");
const QString dunstInterface = QStringLiteral("org.dunstproject.cmd0");
const QString observerName = QStringLiteral("dunst-observer");
const QString centerName = QStringLiteral("dunst-client");

/// A bus that starts dunst, a real notification server, on a display of its own when it is called.
class DunstTest : public testing::Test {
protected:
    DunstTest() {
        const QString program = QStandardPaths::findExecutable(QStringLiteral("dunst"));
        const auto settings = m_directory.path() / "dunstrc";
        test::writeFile(settings, "[global]\nmarkup = full\n");
        test::writeFile(m_directory.path() / "services" / "dunst.service",
                        "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=" + program.toStdString() +
                            " -config " + settings.string() + "\n");
    }
    ~DunstTest() override {
        QDBusConnection::disconnectFromBus(centerName);
        endDunst();
        QDBusConnection::disconnectFromBus(observerName);
    }

    /// The bus hands its own environment on to the services.
    [[nodiscard]] std::unique_ptr<PrivateBus> startBus() const {
        const QByteArray before = qgetenv("DISPLAY");
        qputenv("DISPLAY", m_display.name().toLatin1());
        auto bus =
            std::make_unique<PrivateBus>(QString::fromStdString((m_directory.path() / "services").string()));
        qputenv("DISPLAY", before);
        return bus;
    }

    [[nodiscard]] bool dunstRuns() const { return m_observer.interface()->isServiceRegistered(serverName); }
    void endDunst() const {
        const QDBusReply<uint> process = m_observer.interface()->servicePid(serverName);
        if (process.isValid())
            ::kill(static_cast<pid_t>(process.value()), SIGKILL);
    }
    QDBusMessage callDunst(const QString &interface, const QString &method,
                           const QVariantList &arguments = {}) const {
        QDBusMessage call = QDBusMessage::createMethodCall(
            serverName, QStringLiteral("/org/freedesktop/Notifications"), interface, method);
        call.setAutoStartService(false);
        call.setArguments(arguments);
        return m_observer.call(call);
    }
    /// How many there are on the display.
    [[nodiscard]] int displayed() const {
        const QDBusReply<QDBusVariant> count =
            callDunst(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"),
                      {dunstInterface, QStringLiteral("displayedLength")});
        return count.isValid() ? count.value().variant().toInt() : -1;
    }
    /// Takes all from the display; what they said, as markup, the last one first.
    [[nodiscard]] QStringList closeAll() const {
        callDunst(dunstInterface, QStringLiteral("NotificationCloseAll"));
        QStringList texts;
        const QVariantList history =
            callDunst(dunstInterface, QStringLiteral("NotificationListHistory")).arguments();
        for (const QVariantMap &entry : qdbus_cast<QList<QVariantMap>>(history.value(0)))
            texts.append(entry.value(QStringLiteral("message")).toString());
        return texts;
    }

    std::string send(const UserNotification &notification) {
        std::optional<std::string> outcome;
        m_center.add(notification, [&](const auto &error) { outcome = error.value_or("none"); });
        return waitFor([&] { return outcome.has_value(); }) ? *outcome : "no answer";
    }
    Authorization authorization() {
        std::optional<Authorization> answer;
        m_center.readAuthorization([&](Authorization now) { answer = now; });
        return waitFor([&] { return answer.has_value(); }) ? *answer : Authorization::denied;
    }
    bool request() {
        std::optional<bool> granted;
        m_center.requestAuthorization([&](const auto &outcome) { granted = outcome.granted; });
        return waitFor([&] { return granted.has_value(); }) && *granted;
    }

    test::TemporaryDirectory m_directory;
    test::VirtualDisplay m_display;
    std::unique_ptr<PrivateBus> m_bus = startBus();
    QDBusConnection m_observer = m_bus->connect(observerName);
    LinuxNotificationCenter m_center{m_bus->connect(centerName)};
};

TEST_F(DunstTest, ShowsWhatItIsSentAndTellsAClick) {
    ASSERT_EQ(send({"quota80", "Quota Alert", "You've used 85% of your 5-hour quota."}), "none");
    ASSERT_EQ(send({"updateAvailable", "Update Available", "Burnwick <b>2</b> & more"}), "none");
    ASSERT_EQ(send({"quota80", "Quota Alert", "You've used 91% of your 5-hour quota."}), "none");
    EXPECT_TRUE(waitFor([this] { return displayed() == 2; })) << displayed();

    const QString texts = closeAll().join(u'\n');
    EXPECT_TRUE(texts.contains(QStringLiteral("Burnwick &lt;b&gt;2&lt;/b&gt; &amp; more")))
        << texts.toStdString();
    EXPECT_TRUE(texts.contains(QStringLiteral("used 91%"))) << texts.toStdString();
    EXPECT_FALSE(texts.contains(QStringLiteral("used 85%"))) << texts.toStdString();

    std::vector<std::string> clicks;
    m_center.setActivateHandler([&](const std::string &token) { clicks.push_back(token); });
    ASSERT_EQ(send({"quota80", "Quota Alert", "You've used 95% of your 5-hour quota."}), "none");
    EXPECT_TRUE(waitFor([this] { return displayed() == 1; }));
    callDunst(dunstInterface, QStringLiteral("NotificationAction"), {0U});
    EXPECT_TRUE(waitFor([&] { return !clicks.empty(); }));
    EXPECT_EQ(clicks, std::vector<std::string>(1));
}

TEST_F(DunstTest, IsStartedWhenItIsNeededAndMayEndInBetween) {
    int announcements = 0;
    m_center.setAuthorizationChangedHandler([&] { ++announcements; });
    EXPECT_EQ(authorization(), Authorization::notDetermined);
    EXPECT_FALSE(dunstRuns());
    EXPECT_TRUE(request());
    EXPECT_EQ(authorization(), Authorization::authorized);
    ASSERT_EQ(send({"quota80", "Quota Alert", "one"}), "none");

    announcements = 0;
    endDunst();
    ASSERT_TRUE(waitFor([&] { return announcements == 1; }));
    EXPECT_EQ(authorization(), Authorization::authorized);
    EXPECT_FALSE(dunstRuns());

    ASSERT_EQ(send({"quota80", "Quota Alert", "two"}), "none");
    EXPECT_TRUE(waitFor([this] { return displayed() == 1; })) << displayed();
}

} // namespace
} // namespace burnwick
