// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/notifications/NotificationSettingsCommand.h"

#include "platform/linux/notifications/LinuxDesktopSettings.h"
#include "support/EnvironmentVariable.h"
#include "support/LogCapture.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(NotificationSettingsCommand, IsTheDesktopsOwnOrTheNearest) {
    const struct {
        const char *desktops;
        const char *installed;
        const char *command;
    } rows[] = {
        {"GNOME", "gnome-control-center xfce4-notifyd-config", "gnome-control-center notifications"},
        {"Budgie:GNOME", "gnome-control-center budgie-control-center", "budgie-control-center notifications"},
        {"KDE", "xfce4-notifyd-config systemsettings systemsettings5", "systemsettings kcm_notifications"},
        {"KDE", "kcmshell5", "kcmshell5 kcm_notifications"},
        {"XFCE", "xfce4-notifyd-config systemsettings", "xfce4-notifyd-config"},
        {"x-cinnamon", "cinnamon-settings", "cinnamon-settings notifications"},
        {"LXQt", "lxqt-config-notificationd xfce4-notifyd-config", "lxqt-config-notificationd"},
        // Other desktops, and desktops without their own program.
        {"sway", "gnome-control-center xfce4-notifyd-config", "xfce4-notifyd-config"},
        {"", "mate-notification-properties", "mate-notification-properties"},
        {"sway", "gnome-control-center cinnamon-settings", ""},
    };
    for (const auto &row : rows) {
        const QStringList installed = QString::fromLatin1(row.installed).split(u' ');
        const FindExecutable find = [&](const QString &program) {
            return installed.contains(program) ? QStringLiteral("/bin/") + program : QString();
        };
        const QStringList command = notificationSettingsCommand(QString::fromLatin1(row.desktops), find);
        const QLatin1String words(row.command);
        const QString expected = words.isEmpty() ? QString() : QStringLiteral("/bin/") + words;
        EXPECT_EQ(command.join(u' '), expected) << row.desktops << " with " << row.installed;
    }
}

TEST(LinuxDesktopSettings, StartsTheProgramAndSaysOnceThatThereIsNone) {
    const test::TemporaryDirectory directory;
    const auto opened = directory.path() / "opened";
    const test::EnvironmentVariable path("PATH", directory.path().c_str());
    const test::EnvironmentVariable desktop("XDG_CURRENT_DESKTOP", "KDE");

    LinuxDesktopSettings settings;
    const test::LogCapture log;
    settings.openNotifications();
    settings.openNotifications();
    EXPECT_EQ(log.lines().size(), 1);
    test::writeProgram(directory.path() / "systemsettings",
                       "#!/bin/sh\ncd \"${0%/*}\"\necho \"$@\" >part\n/bin/mv part opened\n");
    settings.openNotifications();
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(opened); }));
    EXPECT_EQ(test::bytesOf(opened), "kcm_notifications\n");
    EXPECT_EQ(log.lines().size(), 1);
}

} // namespace
} // namespace burnwick
