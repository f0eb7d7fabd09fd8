// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/process/FindExecutable.h"

#include <QtCore/QStringList>

namespace burnwick {

/// The command line that opens the settings of notifications: the desktop's own, otherwise another one that
/// is installed. Empty when there is none. `desktops` is XDG_CURRENT_DESKTOP, such as "ubuntu:GNOME".
[[nodiscard]] QStringList notificationSettingsCommand(const QString &desktops,
                                                      const FindExecutable &findExecutable);

} // namespace burnwick
