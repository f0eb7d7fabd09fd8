// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/notifications/LinuxDesktopSettings.h"
#include "platform/linux/notifications/LinuxNotificationCenter.h"
#include "support/EnvironmentVariable.h"
#include "support/FakeNotificationServer.h"
#include "support/LogCapture.h"
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

/// For missing replies; all others arrive earlier on a busy machine too.
constexpr auto shortLimit = 500ms;
const QString pingMethod = QStringLiteral("GetServerInformation");

Authorization authorizationOf(LinuxNotificationCenter &center) {
    std::optional<Authorization> answer;
    center.readAuthorization([&](Authorization authorization) { answer = authorization; });
    EXPECT_TRUE(waitFor([&] { return answer.has_value(); }));
    return answer.value();
}

/// Returns "granted", "not granted" or the error.
std::string requestOf(LinuxNotificationCenter &center) {
    std::optional<NotificationCenter::AuthorizationOutcome> answer;
    center.requestAuthorization([&](const auto &outcome) { answer = outcome; });
    EXPECT_TRUE(waitFor([&] { return answer.has_value(); }));
    return answer->error.value_or(answer->granted ? "granted" : "not granted");
}

/// A desktop without a name, with the user's settings in a temporary folder.
class NotificationSettings : public testing::Test {
protected:
    test::TemporaryDirectory m_directory;
    test::EnvironmentVariable m_config{"XDG_CONFIG_HOME", m_directory.path().c_str()};
    test::EnvironmentVariable m_path{"PATH", m_directory.path().c_str()};
    test::EnvironmentVariable m_desktop{"XDG_CURRENT_DESKTOP", ""};
};

TEST_F(NotificationSettings, AuthorizationNeedsAServerThatReplies) {
    LinuxNotificationCenter center(QDBusConnection::sessionBus(), shortLimit);
    int announcements = 0;
    center.setAuthorizationChangedHandler([&] { ++announcements; });
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    EXPECT_NE(requestOf(center), "granted");
    announcements = 0;
    auto server = std::make_unique<FakeNotificationServer>();
    EXPECT_TRUE(waitFor([&] { return announcements == 1; }));
    EXPECT_EQ(authorizationOf(center), Authorization::authorized);
    EXPECT_EQ(requestOf(center), "granted");
    server->held = QStringList{pingMethod};
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    EXPECT_NE(requestOf(center), "granted");
    server->held.clear();
    server->failing = QStringList{pingMethod};
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
    server.reset();
    EXPECT_TRUE(waitFor([&] { return announcements == 2; }));
    // The bus cannot start it again.
    EXPECT_EQ(authorizationOf(center), Authorization::notDetermined);
}

TEST_F(NotificationSettings, AuthorizationIsDeniedWhenTheDesktopsSwitchIsOff) {
    // GNOME's command replies to this key only.
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
        {"off, a desktop made of it", "ubuntu:GNOME", answer + "false", "", denied},
        {"on", "GNOME", answer + "true", "", authorized},
        {"no schema", "GNOME", "echo false; exit 1", "", authorized},
        {"it hangs", "GNOME", "while :; do :; done", "", authorized},
        {"no command", "GNOME", "", "", authorized},
        {"another desktop", "XFCE", answer + "false", group + "ShowPopups=false\n", authorized},
        {"off", "KDE", "", group + "ShowInHistory=true\nShowPopups=false\n", denied},
        {"off, edited by hand", "KDE", "", "\n " + group + "# off\nShowPopups = Off", denied},
        {"on", "KDE", "", group + "ShowPopups=true\n", authorized},
        {"off for others", "KDE", "", "[Applications][dolphin]\nShowPopups=false\n" + group + "Seen=true\n",
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
        server.calls.clear();
        EXPECT_EQ(authorizationOf(center), row.expected);
        EXPECT_EQ(requestOf(center), row.expected == denied ? "not granted" : "granted");
        EXPECT_EQ(server.calls.contains(pingMethod), row.expected == authorized);
    }
}

TEST(LinuxDesktopSettings, UsesTheDesktopsPageOrAnotherInstalledOne) {
    const struct {
        const char *desktops, *installed, *command;
    } rows[] = {
        {"Budgie:GNOME", "gnome-control-center budgie-control-center", "budgie-control-center notifications"},
        {"KDE", "xfce4-notifyd-config systemsettings systemsettings5", "systemsettings kcm_notifications"},
        {"XFCE", "xfce4-notifyd-config systemsettings", "xfce4-notifyd-config"},
        {"x-cinnamon", "cinnamon-settings", "cinnamon-settings notifications"},
        {"sway", "gnome-control-center xfce4-notifyd-config", "xfce4-notifyd-config"},
        {"", "mate-notification-properties", "mate-notification-properties"},
        {"sway", "gnome-control-center cinnamon-settings", ""},
    };
    for (const auto &row : rows) {
        const QStringList installed = QString::fromLatin1(row.installed).split(u' ');
        const FindExecutable find = [&](const QString &program) {
            return installed.contains(program) ? QStringLiteral("/bin/") + program : QString();
        };
        const QString command =
            notificationSettingsCommand(QString::fromLatin1(row.desktops), find).join(u' ');
        const std::string expected = *row.command == '\0' ? "" : std::string("/bin/") + row.command;
        EXPECT_EQ(command.toStdString(), expected) << row.desktops << " with " << row.installed;
    }
}

TEST_F(NotificationSettings, StartsTheSettingsOrLogsOnceThatThereAreNone) {
    const auto opened = m_directory.path() / "opened";
    m_desktop.set("KDE");
    const auto settings = platform::makeDesktopSettings();
    const test::LogCapture log;
    settings->openNotifications();
    settings->openNotifications();
    EXPECT_EQ(log.lines().size(), 1);
    test::writeProgram(m_directory.path() / "systemsettings",
                       "#!/bin/sh\ncd \"${0%/*}\"\necho \"$@\" >part\n/bin/mv part opened\n");
    settings->openNotifications();
    EXPECT_TRUE(waitFor([&] { return fs::exists(opened); }));
    EXPECT_EQ(test::bytesOf(opened), "kcm_notifications\n");
    EXPECT_EQ(log.lines().size(), 1);
}

} // namespace
} // namespace burnwick
