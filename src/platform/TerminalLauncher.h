// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace burnwick {

/// Opens a window of the user's terminal on a command. Main thread only.
class TerminalLauncher {
public:
    virtual ~TerminalLauncher() = default;

    /// Runs the command in the user's login shell, in a window that outlives this program.
    ///
    /// Answers exactly once, on the main thread, after the call returned; false when no terminal could be
    /// started. The command's exit status is not reported. An answer is dropped when the launcher is
    /// destroyed first; the answer may destroy the launcher.
    virtual void runInLoginShell(const std::string &command, std::function<void(bool launched)> answer) = 0;
};

} // namespace burnwick
