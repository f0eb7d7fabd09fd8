// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TerminalLauncher.h"

#include <QtCore/QObject>

#include <chrono>

namespace burnwick {

/// Tries the installed terminals one after the other, in the order of terminalCommands().
///
/// A terminal counts as started when it still runs after the settling time, or ended with status 0 before:
/// some only request a window from a running server. Later failures are ignored.
class LinuxTerminalLauncher final : public TerminalLauncher {
public:
    /// Terminals were observed to fail at once; a second is enough on a slow machine.
    explicit LinuxTerminalLauncher(std::chrono::milliseconds settlingTime = std::chrono::seconds(1));

    void runInLoginShell(const std::string &command, std::function<void(bool launched)> answer) override;

private:
    std::chrono::milliseconds m_settlingTime;
    QObject m_launches; ///< the launches' parent, also of those whose window is still open
};

} // namespace burnwick
