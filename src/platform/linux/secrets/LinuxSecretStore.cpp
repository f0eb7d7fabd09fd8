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

constexpr std::size_t largestBlob = 1024UL * 1024;

} // namespace

LinuxSecretStore::LinuxSecretStore(const std::filesystem::path &home, std::chrono::milliseconds keyringLimit)
    : m_file(credentialsFile(home))
    , m_keyringLimit(keyringLimit) {}

std::filesystem::path LinuxSecretStore::credentialsFile(const std::filesystem::path &home) {
    return home / ".claude" / ".credentials.json";
}

void LinuxSecretStore::read(const std::string &service,
                            std::function<void(std::optional<StoredSecret> secret)> answer) {
    if (isInFile(service)) {
        const auto blob = readWholeFile(m_file, largestBlob);
        return answer(blob ? std::optional(StoredSecret{*blob, m_file}) : std::nullopt);
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
    const bool wasInFile = secret.place == m_file;
    if (wasInFile != isInFile(service))
        return answer(false);
    if (wasInFile)
        return answer(!replaceWholeFile(m_file, secret.blob));
    const secretservice::ItemSecret item{QByteArray::fromStdString(secret.blob),
                                         QString::fromStdString(secret.place)};
    QCoro::connect(secretservice::replaceSecret(item, QDeadlineTimer(m_keyringLimit)), &m_context,
                   std::move(answer));
}

bool LinuxSecretStore::isInFile(const std::string &service) const {
    std::error_code unreadable;
    return service == claudeCodeService &&
           std::filesystem::status(m_file, unreadable).type() != std::filesystem::file_type::not_found;
}

std::unique_ptr<SecretStore> platform::makeSecretStore(const std::filesystem::path &home) {
    removeAbandonedFiles(LinuxSecretStore::credentialsFile(home));
    return std::make_unique<LinuxSecretStore>(home);
}

} // namespace burnwick
