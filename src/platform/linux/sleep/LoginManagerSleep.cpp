// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/sleep/LoginManagerSleep.h"

#include "platform/linux/bus/BusConnection.h"

#include <utility>

namespace burnwick {

namespace {

constexpr QLatin1String connectionName("burnwick-system-bus");
constexpr QLatin1String managerName("org.freedesktop.login1");
constexpr QLatin1String managerPath("/org/freedesktop/login1");
constexpr QLatin1String managerInterface("org.freedesktop.login1.Manager");

QString systemBusAddress() {
    const QByteArray address = qgetenv("DBUS_SYSTEM_BUS_ADDRESS");
    return address.isEmpty() ? QStringLiteral("unix:path=/var/run/dbus/system_bus_socket")
                             : QString::fromLocal8Bit(address);
}

} // namespace

LoginManagerSleep::LoginManagerSleep(std::function<void()> onWake)
    : m_onWake(std::move(onWake)) {
    connectToBus(this, systemBusAddress(), connectionName, [this](std::optional<QDBusConnection> bus) {
        if (bus)
            listenOn(*bus);
    });
}

void LoginManagerSleep::listenOn(QDBusConnection bus) {
    m_owner.emplace(bus, managerName);
    // From any sender: given the manager's name, this call would block until the bus returns the name's
    // owner.
    bus.connect(QString(), managerPath, managerInterface, QStringLiteral("PrepareForSleep"), this,
                SLOT(onPrepareForSleep(QDBusMessage)));
}

/// Its argument is true before a sleep and false after it.
void LoginManagerSleep::onPrepareForSleep(const QDBusMessage &message) {
    if (message.service() == m_owner->name() && message.signature() == QLatin1String("b") &&
        !message.arguments().constFirst().toBool())
        m_onWake();
}

} // namespace burnwick
