// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/bus/ServiceOwner.h"

#include "platform/linux/bus/MessageBus.h"

#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

namespace burnwick {

ServiceOwner::ServiceOwner(const QDBusConnection &bus, const QString &service)
    : m_changes(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&m_changes, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) { setName(newOwner); });
    const auto call = callMessageBus(bus, QStringLiteral("GetNameOwner"), {service});
    connect(new QDBusPendingCallWatcher(call, this), &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusPendingReply<QString> owner = *finished;
                if (!m_name) // otherwise a change was announced meanwhile, which is newer
                    setName(owner.isValid() ? owner.value() : QString());
            });
}

void ServiceOwner::setName(const QString &name) {
    if (m_name == name)
        return;
    m_name = name;
    Q_EMIT changed(name);
}

} // namespace burnwick
