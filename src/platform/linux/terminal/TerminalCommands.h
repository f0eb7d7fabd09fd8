// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/process/FindExecutable.h"

#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>

#include <vector>

namespace burnwick {

/// Returns the installed terminals as the beginnings of command lines, the preferred one first. Append the
/// program to run in the window and its arguments, each as a separate argument.
///
/// First what the user chose (the variable TERMINAL, then the system's own choosers), then the desktop's
/// terminal by XDG_CURRENT_DESKTOP, then the rest. Those that need Wayland only with WAYLAND_DISPLAY.
[[nodiscard]] std::vector<QStringList> terminalCommands(const QProcessEnvironment &environment,
                                                        const FindExecutable &findExecutable);

/// Returns the command line that runs the command in the user's login shell. After a failure it waits for the
/// Enter key, so that the user can read the reason before the window closes. Always ends with status 0.
///
/// The shell is the variable SHELL; when it is unset /bin/zsh; /bin/sh when that is not installed or not
/// known to understand -l and -c.
[[nodiscard]] QStringList loginShellCommand(const QProcessEnvironment &environment,
                                            const FindExecutable &findExecutable, const QString &command);

} // namespace burnwick
