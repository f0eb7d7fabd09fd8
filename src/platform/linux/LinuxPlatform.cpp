// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include "platform/linux/LinuxSecretStore.h"
#include "platform/linux/LinuxStatusItem.h"

namespace burnwick::platform {

std::unique_ptr<StatusItem> makeStatusItem() {
    return std::make_unique<LinuxStatusItem>();
}

std::unique_ptr<SecretStore> makeSecretStore(const std::filesystem::path &home) {
    return std::make_unique<LinuxSecretStore>(home);
}

} // namespace burnwick::platform
