// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/notifications/LinuxDesktopSettings.h"

#include "platform/Platform.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>

#include <utility>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(desktopSettingsLog, "burnwick.desktopsettings")

struct SettingsPage {
    const char *command; ///< words separated by spaces
    const char *desktop; ///< the desktop whose page it is, as in XDG_CURRENT_DESKTOP
    bool onlyThere = false;
};

/// In the order of preference: newer pages of a desktop precede older ones.
constexpr SettingsPage pages[] = {
    {"xfce4-notifyd-config", "XFCE"},
    {"mate-notification-properties", "MATE"},
    {"lxqt-config-notificationd", "LXQt"},
    {"systemsettings kcm_notifications", "KDE"},
    {"systemsettings5 kcm_notifications", "KDE"},
    {"kcmshell6 kcm_notifications", "KDE"},
    {"kcmshell5 kcm_notifications", "KDE"},
    {"cinnamon-settings notifications", "X-Cinnamon", true},
    {"budgie-control-center notifications", "Budgie", true},
    // This one does not open on any other desktop.
    {"gnome-control-center notifications", "GNOME", true},
    {"gnome-control-center notifications", "Unity", true},
};

} // namespace

QStringList notificationSettingsCommand(const QString &desktops, const FindExecutable &findExecutable) {
    const auto installed = [&findExecutable](const SettingsPage &page) {
        QStringList words = QString::fromLatin1(page.command).split(u' ');
        words.first() = findExecutable(words.first());
        return words.first().isEmpty() ? QStringList() : words;
    };
    for (const QString &desktop : desktops.split(u':', Qt::SkipEmptyParts))
        for (const SettingsPage &page : pages)
            if (desktop.compare(QLatin1String(page.desktop), Qt::CaseInsensitive) == 0)
                if (QStringList command = installed(page); !command.isEmpty())
                    return command;
    for (const SettingsPage &page : pages)
        if (QStringList command = installed(page); !page.onlyThere && !command.isEmpty())
            return command;
    return {};
}

namespace {

/// Runs the command of notificationSettingsCommand(), which outlives this program.
class LinuxDesktopSettings final : public DesktopSettings {
public:
    void openNotifications() override {
        QStringList arguments = notificationSettingsCommand(
            qEnvironmentVariable("XDG_CURRENT_DESKTOP"),
            [](const QString &program) { return QStandardPaths::findExecutable(program); });
        QProcess process;
        if (!arguments.isEmpty()) {
            process.setProgram(arguments.takeFirst());
            process.setArguments(arguments);
            process.setStandardInputFile(QProcess::nullDevice());
            process.setStandardOutputFile(QProcess::nullDevice());
            process.setStandardErrorFile(QProcess::nullDevice());
            if (process.startDetached())
                return;
        }
        if (!std::exchange(m_absenceLogged, true))
            qCWarning(desktopSettingsLog,
                      "no program for the desktop's notification settings could be started");
    }

private:
    bool m_absenceLogged = false;
};

} // namespace

std::unique_ptr<DesktopSettings> platform::makeDesktopSettings() {
    return std::make_unique<LinuxDesktopSettings>();
}

} // namespace burnwick
