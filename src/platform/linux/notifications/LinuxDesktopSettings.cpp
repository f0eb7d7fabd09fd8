// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/notifications/LinuxDesktopSettings.h"

#include "platform/Platform.h"
#include "platform/linux/notifications/NotificationSettingsCommand.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QProcess>
#include <QtCore/QStandardPaths>

#include <utility>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(desktopSettingsLog, "burnwick.desktopsettings")

} // namespace

void LinuxDesktopSettings::openNotifications() {
    QStringList arguments =
        notificationSettingsCommand(qEnvironmentVariable("XDG_CURRENT_DESKTOP"), [](const QString &program) {
            return QStandardPaths::findExecutable(program);
        });
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
    if (!std::exchange(m_toldNone, true))
        qCWarning(desktopSettingsLog, "no program for the desktop's notification settings could be started");
}

std::unique_ptr<DesktopSettings> platform::makeDesktopSettings() {
    return std::make_unique<LinuxDesktopSettings>();
}

} // namespace burnwick
