// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/LinuxSecretStore.h"

#include "platform/linux/SecretService.h"
#include "platform/linux/WholeFile.h"

#include <QtCore/QPointer>

#include <utility>

namespace burnwick {

namespace {

constexpr std::size_t largestBlob = 1024UL * 1024;

using std::chrono::milliseconds;
using ReadAnswer = std::function<void(std::optional<std::string>)>;
using ReplaceAnswer = std::function<void(bool)>;

QCoro::Task<void> readFromKeyring(QPointer<QObject> store, QDBusConnection bus, QString service,
                                  milliseconds limit, ReadAnswer answer) {
    const auto secret = co_await secretservice::readSecret(bus, service, limit);
    if (!store)
        co_return;
    std::optional<std::string> blob;
    if (secret && static_cast<std::size_t>(secret->size()) <= largestBlob)
        blob = secret->toStdString();
    answer(std::move(blob));
}

QCoro::Task<void> replaceInKeyring(QPointer<QObject> store, QDBusConnection bus, QString service,
                                   QByteArray blob, milliseconds limit, ReplaceAnswer answer) {
    const bool replaced = co_await secretservice::replaceSecret(bus, service, blob, limit);
    if (store)
        answer(replaced);
}

} // namespace

LinuxSecretStore::LinuxSecretStore(const std::filesystem::path &home, QDBusConnection bus,
                                   milliseconds keyringLimit)
    : m_file(home / ".claude" / ".credentials.json")
    , m_bus(std::move(bus))
    , m_keyringLimit(keyringLimit) {}

void LinuxSecretStore::read(const std::string &service, ReadAnswer answer) {
    if (isInFile(service))
        return answer(readWholeFile(m_file, largestBlob));
    // Nothing in there throws; the answer comes by itself.
    static_cast<void>(readFromKeyring(&m_lifetime, m_bus, QString::fromStdString(service), m_keyringLimit,
                                      std::move(answer)));
}

void LinuxSecretStore::replace(const std::string &service, const std::string &blob, ReplaceAnswer answer) {
    if (blob.size() > largestBlob)
        return answer(false); // nobody could read it back
    if (isInFile(service))
        return answer(!replaceWholeFile(m_file, blob));
    static_cast<void>(replaceInKeyring(&m_lifetime, m_bus, QString::fromStdString(service),
                                       QByteArray::fromStdString(blob), m_keyringLimit, std::move(answer)));
}

bool LinuxSecretStore::isInFile(const std::string &service) const {
    std::error_code unreadable;
    return service == claudeCodeService &&
           std::filesystem::status(m_file, unreadable).type() != std::filesystem::file_type::not_found;
}

} // namespace burnwick
