// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/secrets/LinuxSecretStore.h"

#include "platform/Platform.h"
#include "platform/linux/files/WholeFile.h"
#include "platform/linux/secrets/SecretService.h"

#include <QtCore/QDeadlineTimer>

#include <utility>

namespace burnwick {

namespace {

constexpr const char *credentialsName = ".credentials.json";
constexpr std::size_t largestBlob = 1024UL * 1024;

} // namespace

LinuxSecretStore::LinuxSecretStore(ConfigurationFolders configurationFolders,
                                   std::chrono::milliseconds keyringLimit)
    : m_folders(std::move(configurationFolders))
    , m_keyringLimit(keyringLimit) {}

std::filesystem::path LinuxSecretStore::credentialsFile(const std::filesystem::path &configurationFolder) {
    return configurationFolder / credentialsName;
}

void LinuxSecretStore::read(const std::string &service,
                            std::function<void(std::optional<StoredSecret> secret)> answer) {
    if (const auto file = fileOf(service)) {
        const auto blob = readWholeFile(*file, largestBlob);
        return answer(blob ? std::optional(StoredSecret{*blob, *file}) : std::nullopt);
    }
    QCoro::connect(secretservice::readSecret(QString::fromStdString(service), QDeadlineTimer(m_keyringLimit)),
                   &m_context,
                   [answer = std::move(answer)](const std::optional<secretservice::ItemSecret> &secret) {
                       if (secret && static_cast<std::size_t>(secret->value.size()) <= largestBlob)
                           answer(StoredSecret{secret->value.toStdString(), secret->item.toStdString()});
                       else
                           answer(std::nullopt);
                   });
}

void LinuxSecretStore::replace(const std::string &service, const StoredSecret &secret,
                               std::function<void(bool replaced)> answer) {
    if (secret.blob.size() > largestBlob)
        return answer(false); // read() would not return it
    // A place in the keyring is no path of a file.
    const auto file = fileOf(service);
    if (file)
        return answer(secret.place == file->native() && !replaceWholeFile(*file, secret.blob));
    if (std::filesystem::path(secret.place).filename() == credentialsName)
        return answer(false);
    const secretservice::ItemSecret item{QByteArray::fromStdString(secret.blob),
                                         QString::fromStdString(secret.place)};
    QCoro::connect(secretservice::replaceSecret(item, QDeadlineTimer(m_keyringLimit)), &m_context,
                   std::move(answer));
}

/// Returns the file with the service's secret; null if that is in the keyring.
std::optional<std::filesystem::path> LinuxSecretStore::fileOf(const std::string &service) const {
    if (service != claudeCodeService)
        return std::nullopt;
    for (const std::filesystem::path &folder : m_folders()) {
        std::error_code unreadable;
        const auto file = credentialsFile(folder);
        if (std::filesystem::status(file, unreadable).type() != std::filesystem::file_type::not_found)
            return file;
    }
    return std::nullopt;
}

std::unique_ptr<SecretStore> platform::makeSecretStore(ConfigurationFolders configurationFolders) {
    for (const std::filesystem::path &folder : configurationFolders())
        removeAbandonedFiles(LinuxSecretStore::credentialsFile(folder));
    return std::make_unique<LinuxSecretStore>(std::move(configurationFolders));
}

} // namespace burnwick
