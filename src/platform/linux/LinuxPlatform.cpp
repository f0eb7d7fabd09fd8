// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "platform/linux/LinuxSecretStore.h"
#include "platform/linux/LinuxStatusItem.h"
#include "platform/linux/LinuxTerminalLauncher.h"

namespace burnwick::platform {

std::unique_ptr<StatusItem> makeStatusItem() {
    return std::make_unique<LinuxStatusItem>();
}

std::unique_ptr<SecretStore> makeSecretStore(const std::filesystem::path &home) {
    return std::make_unique<LinuxSecretStore>(home);
}

std::unique_ptr<TerminalLauncher> makeTerminalLauncher() {
    return std::make_unique<LinuxTerminalLauncher>();
}

} // namespace burnwick::platform
