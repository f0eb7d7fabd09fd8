// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/NotificationSettingsCommand.h"

#include "platform/linux/LinuxDesktopSettings.h"
#include "support/LogCapture.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QFile>

namespace burnwick {
namespace {

TEST(NotificationSettingsCommand, IsTheDesktopsOwnOrTheNearest) {
    const struct {
        const char *desktops;
        const char *installed;
        const char *command;
    } rows[] = {
        {"GNOME", "gnome-control-center xfce4-notifyd-config", "gnome-control-center notifications"},
        {"ubuntu:GNOME", "gnome-control-center", "gnome-control-center notifications"},
        {"Budgie:GNOME", "gnome-control-center budgie-control-center", "budgie-control-center notifications"},
        {"Budgie:GNOME", "gnome-control-center", "gnome-control-center notifications"},
        {"KDE", "xfce4-notifyd-config systemsettings systemsettings5", "systemsettings kcm_notifications"},
        {"KDE", "systemsettings5 kcmshell5", "systemsettings5 kcm_notifications"},
        {"KDE", "kcmshell5", "kcmshell5 kcm_notifications"},
        {"XFCE", "xfce4-notifyd-config systemsettings", "xfce4-notifyd-config"},
        {"xfce", "systemsettings xfce4-notifyd-config", "xfce4-notifyd-config"},
        {"X-Cinnamon", "cinnamon-settings", "cinnamon-settings notifications"},
        {"LXQt", "lxqt-config-notificationd xfce4-notifyd-config", "lxqt-config-notificationd"},
        // Other desktops, and desktops without their own program.
        {"sway", "gnome-control-center xfce4-notifyd-config", "xfce4-notifyd-config"},
        {"GNOME", "systemsettings", "systemsettings kcm_notifications"},
        {"", "mate-notification-properties", "mate-notification-properties"},
        {"sway", "gnome-control-center cinnamon-settings", ""},
        {"XFCE", "", ""},
    };
    for (const auto &row : rows) {
        const QStringList installed = QString::fromLatin1(row.installed).split(u' ');
        const FindExecutable find = [&](const QString &program) {
            return installed.contains(program) ? u"/bin/"_qs + program : QString();
        };
        const QStringList command = notificationSettingsCommand(QString::fromLatin1(row.desktops), find);
        const QLatin1String words(row.command);
        const QString expected = words.isEmpty() ? QString() : u"/bin/"_qs + words;
        EXPECT_EQ(command.join(u' '), expected) << row.desktops << " with " << row.installed;
    }
}

TEST(LinuxDesktopSettings, StartsTheProgramAndSaysOnceThatThereIsNone) {
    const test::TemporaryDirectory directory;
    const QByteArray pathBefore = qgetenv("PATH");
    const QByteArray desktopBefore = qgetenv("XDG_CURRENT_DESKTOP");
    const auto program = directory.path() / "systemsettings";
    const auto opened = directory.path() / "opened";
    qputenv("PATH", QByteArray::fromStdString(directory.path().string()));
    qputenv("XDG_CURRENT_DESKTOP", "KDE");

    LinuxDesktopSettings settings;
    const test::LogCapture log;
    settings.openNotifications();
    settings.openNotifications();
    EXPECT_EQ(log.lines().size(), 1);
    test::writeFile(program, "#!/bin/sh\necho \"$@\" >" + opened.string() + ".part\n/bin/mv " +
                                 opened.string() + ".part " + opened.string() + "\n");
    std::filesystem::permissions(program, std::filesystem::perms::owner_all);
    settings.openNotifications();
    EXPECT_TRUE(waitFor([&] { return std::filesystem::exists(opened); }));
    QFile file(QString::fromStdString(opened.string()));
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "kcm_notifications\n");
    EXPECT_EQ(log.lines().size(), 1);

    qputenv("PATH", pathBefore);
    qputenv("XDG_CURRENT_DESKTOP", desktopBefore);
}

} // namespace
} // namespace burnwick
