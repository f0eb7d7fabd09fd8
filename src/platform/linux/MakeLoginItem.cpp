// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/AutostartLoginItem.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>

namespace burnwick {

namespace {

/// Qt takes a relative path in the variable for one; the XDG Base Directory Specification has it ignored.
QString configFolder() {
    const QString chosen = qEnvironmentVariable("XDG_CONFIG_HOME");
    return QDir::isAbsolutePath(chosen) ? chosen : QDir::homePath() + QStringLiteral("/.config");
}

} // namespace

std::unique_ptr<LoginItem> platform::makeLoginItem() {
    // Not this process's PATH, of which the desktop's session may have only a part.
    const QStringList everySessionsPath{QStringLiteral("/usr/local/bin"), QStringLiteral("/usr/bin"),
                                        QStringLiteral("/bin")};
    return std::make_unique<AutostartLoginItem>(
        (configFolder() + QStringLiteral("/autostart")).toStdString(),
        programNameForEntry(QCoreApplication::applicationFilePath(), everySessionsPath));
}

} // namespace burnwick
