// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/LinuxTerminalLauncher.h"

namespace burnwick {

std::unique_ptr<TerminalLauncher> platform::makeTerminalLauncher() {
    return std::make_unique<LinuxTerminalLauncher>();
}

} // namespace burnwick
