// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SecretStore.h"

#include <QtCore/QObject>

#include <chrono>
#include <filesystem>
#include <functional>
#include <optional>

namespace burnwick {

/// Claude Code's login is in the file .credentials.json of the first of its folders that has one, even when
/// it cannot be read; otherwise, as for any other service, in the keyring (see SecretService.h). Each call
/// checks this anew. Connects to the session bus only when the keyring is needed. Blobs have at most 1 MiB.
///
/// The file, which is small and local, is read and written within the call. Calls do not block for the bus or
/// the keyring.
class LinuxSecretStore final : public SecretStore {
public:
    /// `keyringLimit` is for one whole operation on the keyring.
    explicit LinuxSecretStore(ConfigurationFolders configurationFolders,
                              std::chrono::milliseconds keyringLimit = std::chrono::seconds(5));

    [[nodiscard]] static std::filesystem::path
    credentialsFile(const std::filesystem::path &configurationFolder);

    void read(const std::string &service,
              std::function<void(std::optional<StoredSecret> secret)> answer) override;
    void replace(const std::string &service, const StoredSecret &secret,
                 std::function<void(bool replaced)> answer) override;

private:
    [[nodiscard]] std::optional<std::filesystem::path> fileOf(const std::string &service) const;

    ConfigurationFolders m_folders;
    std::chrono::milliseconds m_keyringLimit;
    QObject m_context; ///< answers are dropped once it is destroyed
};

} // namespace burnwick
