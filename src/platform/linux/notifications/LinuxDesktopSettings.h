// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/process/FindExecutable.h"

#include <QtCore/QStringList>

namespace burnwick {

/// Returns the command line that opens the settings of notifications: the desktop's, otherwise another
/// installed one; empty when none is installed. `desktops` is XDG_CURRENT_DESKTOP, such as "ubuntu:GNOME".
[[nodiscard]] QStringList notificationSettingsCommand(const QString &desktops,
                                                      const FindExecutable &findExecutable);

} // namespace burnwick
