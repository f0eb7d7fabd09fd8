// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/notifications/LinuxNotificationCenter.h"
#include "support/EnvironmentVariable.h"
#include "support/FakeNotificationServer.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <memory>
#include <optional>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using Authorization = NotificationCenter::Authorization;

constexpr auto noLimit = 1h;
/// For answers that never come; others come before it on a busy machine too.
constexpr auto shortLimit = 500ms;

Authorization authorizationOf(LinuxNotificationCenter &center) {
    std::optional<Authorization> answer;
    center.readAuthorization([&](Authorization authorization) { answer = authorization; });
    EXPECT_TRUE(waitFor([&] { return answer.has_value(); }));
    return answer.value();
}

NotificationCenter::AuthorizationOutcome requestOf(LinuxNotificationCenter &center) {
    std::optional<NotificationCenter::AuthorizationOutcome> answer;
    center.requestAuthorization([&](const auto &outcome) { answer = outcome; });
    EXPECT_TRUE(waitFor([&] { return answer.has_value(); }));
    return answer.value();
}

/// A desktop without a name, with the user's settings in a folder of its own.
class NotificationAuthorization : public testing::Test {
protected:
    test::TemporaryDirectory m_directory;
    test::EnvironmentVariable m_config{"XDG_CONFIG_HOME", m_directory.path().c_str()};
    test::EnvironmentVariable m_path{"PATH", m_directory.path().c_str()};
    test::EnvironmentVariable m_desktop{"XDG_CURRENT_DESKTOP", ""};
};

TEST_F(NotificationAuthorization, DependsOnWhetherAServerAnswers) {
    LinuxNotificationCenter center(QDBusConnection::sessionBus(), shortLimit);
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    EXPECT_FALSE(requestOf(center).granted);
    EXPECT_NE(requestOf(center).error.value_or(""), "");
    {
        FakeNotificationServer server;
        EXPECT_EQ(authorizationOf(center), Authorization::authorized);
        EXPECT_TRUE(requestOf(center).granted);
        EXPECT_EQ(requestOf(center).error, std::nullopt);
        server.held = QStringList{QStringLiteral("GetServerInformation")};
        EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
        EXPECT_NE(requestOf(center).error.value_or(""), "");
        server.held.clear();
        server.failing = QStringList{QStringLiteral("GetServerInformation")};
        EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    }
    // Nobody would start it again.
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
}

TEST_F(NotificationAuthorization, WithoutABusItIsNotDetermined) {
    const QString name = QStringLiteral("no-bus");
    LinuxNotificationCenter center(
        QDBusConnection::connectToBus(QStringLiteral("unix:path=/nonexistent/bus"), name), noLimit);
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    EXPECT_NE(requestOf(center).error.value_or(""), "");
    QDBusConnection::disconnectFromBus(name);
}

TEST_F(NotificationAuthorization, ComingAndGoingServersAreAnnounced) {
    LinuxNotificationCenter center;
    int announcements = 0;
    center.setAuthorizationChangedHandler([&] { ++announcements; });
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    announcements = 0;
    auto server = std::make_unique<FakeNotificationServer>();
    EXPECT_TRUE(waitFor([&] { return announcements == 1; }));
    EXPECT_EQ(authorizationOf(center), Authorization::authorized);
    server.reset();
    EXPECT_TRUE(waitFor([&] { return announcements == 2; }));
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
}

TEST_F(NotificationAuthorization, IsDeniedWhereTheDesktopSaysSo) {
    // GNOME's command answers only to the question that is expected.
    const std::string answer = "[ \"$*\" = 'get org.gnome.desktop.notifications.application:"
                               "/org/gnome/desktop/notifications/application/burnwick/ enable' ] && echo ";
    const std::string group = "[Applications][burnwick]\n";
    const auto denied = Authorization::denied;
    const auto authorized = Authorization::authorized;
    const struct {
        const char *what, *desktop;
        std::string gsettings, plasma;
        Authorization expected;
    } rows[] = {
        {"off", "GNOME", answer + "false", "", denied},
        {"off, a desktop made of it", "ubuntu:GNOME", answer + "false", "", denied},
        {"on", "GNOME", answer + "true", "", authorized},
        {"no schema", "GNOME", "echo false; exit 1", "", authorized},
        {"it hangs", "GNOME", "while :; do :; done", "", authorized},
        {"no command", "GNOME", "", "", authorized},
        {"another desktop", "XFCE", answer + "false", group + "ShowPopups=false\n", authorized},
        {"off", "KDE", "", group + "ShowInHistory=true\nShowPopups=false\n", denied},
        {"off, edited by hand", "KDE", "", "\n " + group + "# off\nShowPopups = Off", denied},
        {"on", "KDE", "", group + "ShowPopups=true\n", authorized},
        {"off for others", "KDE", "",
         "[Applications][dolphin]\nShowPopups=false\n" + group +
             "Seen=true\n[Services][x]\nShowPopups=false\n",
         authorized},
        {"nothing", "KDE", "", "", authorized},
    };
    FakeNotificationServer server;
    for (const auto &row : rows) {
        SCOPED_TRACE(std::string(row.desktop) + ": " + row.what);
        m_desktop.set(row.desktop);
        fs::remove(m_directory.path() / "gsettings");
        if (!row.gsettings.empty())
            test::writeProgram(m_directory.path() / "gsettings", "#!/bin/sh\n" + row.gsettings);
        test::writeFile(m_directory.path() / "plasmanotifyrc", row.plasma);
        LinuxNotificationCenter center(QDBusConnection::sessionBus(), shortLimit);
        EXPECT_EQ(authorizationOf(center), row.expected);
    }
}

TEST_F(NotificationAuthorization, ADenialIsNoErrorOfTheRequest) {
    FakeNotificationServer server;
    m_desktop.set("KDE");
    test::writeFile(m_directory.path() / "plasmanotifyrc", "[Applications][burnwick]\nShowPopups=false\n");
    LinuxNotificationCenter center;
    EXPECT_FALSE(requestOf(center).granted);
    EXPECT_EQ(requestOf(center).error, std::nullopt);
    EXPECT_FALSE(server.calls.contains(QStringLiteral("GetServerInformation")));
}

} // namespace
} // namespace burnwick
