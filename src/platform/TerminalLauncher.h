// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <string>

namespace burnwick {

/// Runs a command in a window of the user's terminal. Main thread only.
class TerminalLauncher {
public:
    virtual ~TerminalLauncher() = default;

    /// Runs the command in the user's login shell, in a window that outlives this program.
    ///
    /// Calls `answer` exactly once, on the main thread, after this call returned; not after the launcher is
    /// destroyed. `launched` is false when no terminal could be started; the command's exit status is not
    /// reported. The answer may destroy the launcher.
    virtual void runInLoginShell(const std::string &command, std::function<void(bool launched)> answer) = 0;
};

} // namespace burnwick
