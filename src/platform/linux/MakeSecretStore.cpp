// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/LinuxSecretStore.h"
#include "platform/linux/WholeFile.h"

namespace burnwick {

std::unique_ptr<SecretStore> platform::makeSecretStore(const std::filesystem::path &home) {
    removeAbandonedFiles(LinuxSecretStore::credentialsFile(home));
    return std::make_unique<LinuxSecretStore>(home);
}

} // namespace burnwick
