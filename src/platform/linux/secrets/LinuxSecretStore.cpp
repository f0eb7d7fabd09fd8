// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/secrets/LinuxSecretStore.h"

#include "files/WholeFile.h"
#include "platform/Platform.h"
#include "platform/linux/bus/BusConnection.h"
#include "platform/linux/bus/SessionBusAddress.h"
#include "platform/linux/secrets/SecretService.h"

#include <QtCore/QDeadlineTimer>
#include <QtCore/QPointer>

#include <utility>

namespace burnwick {

namespace {

constexpr std::size_t largestBlob = 1024UL * 1024;

using ReadAnswer = std::function<void(std::optional<StoredSecret>)>;
using ReplaceAnswer = std::function<void(bool)>;

QCoro::Task<void> readFromKeyring(QPointer<QObject> store, QDBusConnection bus, QString service,
                                  QDeadlineTimer deadline, ReadAnswer answer) {
    const auto secret = co_await secretservice::readSecret(bus, service, deadline);
    if (!store)
        co_return;
    std::optional<StoredSecret> stored;
    if (secret && static_cast<std::size_t>(secret->value.size()) <= largestBlob)
        stored = StoredSecret{secret->value.toStdString(), secret->item.toStdString()};
    answer(std::move(stored));
}

QCoro::Task<void> replaceInKeyring(QPointer<QObject> store, QDBusConnection bus,
                                   secretservice::ItemSecret secret, QDeadlineTimer deadline,
                                   ReplaceAnswer answer) {
    const bool replaced = co_await secretservice::replaceSecret(bus, secret, deadline);
    if (store)
        answer(replaced);
}

} // namespace

LinuxSecretStore::LinuxSecretStore(const std::filesystem::path &home, std::chrono::milliseconds keyringLimit)
    : m_file(credentialsFile(home))
    , m_keyringLimit(keyringLimit) {}

std::filesystem::path LinuxSecretStore::credentialsFile(const std::filesystem::path &home) {
    return home / ".claude" / ".credentials.json";
}

void LinuxSecretStore::read(const std::string &service, ReadAnswer answer) {
    if (isInFile(service)) {
        const auto blob = readWholeFile(m_file, largestBlob);
        return answer(blob ? std::optional(StoredSecret{*blob, m_file}) : std::nullopt);
    }
    const QDeadlineTimer deadline(m_keyringLimit);
    connectToKeyring([this, name = QString::fromStdString(service), deadline,
                      answer = std::move(answer)](std::optional<QDBusConnection> bus) {
        if (!bus)
            return answer(std::nullopt);
        // Nothing in there throws; the answer comes by itself.
        static_cast<void>(readFromKeyring(&m_context, *bus, name, deadline, answer));
    });
}

void LinuxSecretStore::replace(const std::string &service, const StoredSecret &secret, ReplaceAnswer answer) {
    if (secret.blob.size() > largestBlob)
        return answer(false); // nobody could read it back
    const bool wasInFile = secret.place == m_file;
    if (wasInFile != isInFile(service))
        return answer(false);
    if (wasInFile)
        return answer(!replaceWholeFile(m_file, secret.blob));
    const QDeadlineTimer deadline(m_keyringLimit);
    const secretservice::ItemSecret item{QByteArray::fromStdString(secret.blob),
                                         QString::fromStdString(secret.place)};
    connectToKeyring([this, item, deadline, answer = std::move(answer)](std::optional<QDBusConnection> bus) {
        if (!bus)
            return answer(false);
        static_cast<void>(replaceInKeyring(&m_context, *bus, item, deadline, answer));
    });
}

void LinuxSecretStore::connectToKeyring(std::function<void(std::optional<QDBusConnection>)> answer) {
    connectToBus(&m_context, sessionBusAddress(), QStringLiteral("burnwick-keyring"), std::move(answer));
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
