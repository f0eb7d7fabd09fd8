// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/PrivateBus.h"

#include <QtCore/QVariant>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>

#include <utility>

namespace burnwick {

/// The login manager on a bus that serves as the system's; with another name, a stranger that sends the same
/// signal.
class FakeLoginManager {
public:
    explicit FakeLoginManager(const PrivateBus &bus, QString name = QStringLiteral("org.freedesktop.login1"))
        : m_name(std::move(name))
        , m_connection(bus.connect(m_name)) {
        m_connection.interface()->registerService(m_name);
    }
    ~FakeLoginManager() { QDBusConnection::disconnectFromBus(m_name); }
    FakeLoginManager(const FakeLoginManager &) = delete;
    FakeLoginManager &operator=(const FakeLoginManager &) = delete;

    void prepareForSleep(const QVariant &starting) const {
        QDBusMessage signal = QDBusMessage::createSignal(QStringLiteral("/org/freedesktop/login1"),
                                                         QStringLiteral("org.freedesktop.login1.Manager"),
                                                         QStringLiteral("PrepareForSleep"));
        signal.setArguments({starting});
        m_connection.send(signal);
        // Blocks until the bus has passed it on.
        static_cast<void>(m_connection.interface()->isServiceRegistered(m_name));
    }

private:
    QString m_name;
    QDBusConnection m_connection;
};

} // namespace burnwick
