// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/bus/ServiceOwner.h"

#include "platform/linux/bus/BusCall.h"

#include <QtDBus/QDBusReply>

namespace burnwick {

ServiceOwner::ServiceOwner(const QDBusConnection &bus, const QString &service)
    : m_changes(service, bus, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&m_changes, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) { setName(newOwner); });
    whenFinished(callMessageBus(bus, QStringLiteral("GetNameOwner"), {service}), this,
                 [this](const QDBusMessage &reply) {
                     if (!m_name) // a change that was announced meanwhile is newer
                         setName(QDBusReply<QString>(reply).value());
                 });
}

void ServiceOwner::setName(const QString &name) {
    if (m_name == name)
        return;
    m_name = name;
    Q_EMIT changed(name);
}

} // namespace burnwick
