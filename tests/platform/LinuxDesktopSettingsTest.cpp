// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/notifications/LinuxDesktopSettings.h"

#include "support/EnvironmentVariable.h"
#include "support/LogCapture.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

TEST(LinuxDesktopSettings, ThePageIsTheDesktopsOrAnotherInstalledOne) {
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

TEST(LinuxDesktopSettings, StartsTheProgramAndLogsOnceThatThereIsNone) {
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
