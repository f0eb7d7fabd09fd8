// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/process/FindExecutable.h"

#include <QtCore/QProcessEnvironment>
#include <QtCore/QStringList>

#include <vector>

namespace burnwick {

/// The installed terminals as the beginnings of command lines, the best one first; the program to run in the
/// window and its arguments go behind, each as an argument of its own.
///
/// First what the user chose (the variable TERMINAL, then the system's own choosers), then the desktop's
/// terminal by XDG_CURRENT_DESKTOP, then the rest. Those that need Wayland only with WAYLAND_DISPLAY.
[[nodiscard]] std::vector<QStringList> terminalCommands(const QProcessEnvironment &environment,
                                                        const FindExecutable &findExecutable);

/// The command line that runs the command in the user's login shell. When the command succeeds, it ends;
/// otherwise it waits for the Enter key, so that the reason can be read before the window closes. Ends with
/// status 0 in both cases.
///
/// The shell is the variable SHELL; when it is unset /bin/zsh; /bin/sh when that is not installed or not
/// known to understand -l and -c.
[[nodiscard]] QStringList loginShellCommand(const QProcessEnvironment &environment,
                                            const FindExecutable &findExecutable, const QString &command);

} // namespace burnwick
