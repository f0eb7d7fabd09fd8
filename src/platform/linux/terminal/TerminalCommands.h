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
/// The user's choice is first (the variable TERMINAL, then the system's choosers), then the desktop's
/// terminal by XDG_CURRENT_DESKTOP, then all others. Those that need Wayland are included only with
/// WAYLAND_DISPLAY.
[[nodiscard]] std::vector<QStringList> terminalCommands(const QProcessEnvironment &environment,
                                                        const FindExecutable &findExecutable);

/// Returns the command line that runs the command in the user's login shell. After a failure it waits for the
/// Enter key, so that the user can read the reason before the window closes. Always ends with status 0.
///
/// The shell is that of the variable SHELL, or /bin/zsh when it is unset; /bin/sh when that shell is not
/// installed, or not known to understand -l and -c.
[[nodiscard]] QStringList loginShellCommand(const QProcessEnvironment &environment,
                                            const FindExecutable &findExecutable, const QString &command);

} // namespace burnwick
