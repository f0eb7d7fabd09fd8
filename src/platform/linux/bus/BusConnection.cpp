// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/bus/BusConnection.h"

#include "async/UnawaitedResult.h"
#include "platform/linux/bus/SessionBusAddress.h"

#include <QtCore/QFutureWatcher>

#include <utility>

namespace burnwick {

namespace {

using Bus = std::optional<QDBusConnection>;

/// Blocks until the bus answers, or for 2 s where it is silent: QtDBus would wait for a silent bus without
/// limit, and hold up all connections that others make meanwhile.
Bus connectBlocking(const QString &address, const QString &name) {
    if (isSilentBus(address, silentBusLimit))
        return std::nullopt;
    const auto bus = QDBusConnection::connectToBus(address, name);
    return bus.isConnected() ? Bus(bus) : std::nullopt;
}

} // namespace

void connectToBus(QObject *context, const QString &address, const QString &name,
                  std::function<void(Bus bus)> answer) {
    if (const QDBusConnection present(name); present.isConnected())
        return answer(present);
    // Without an address, the D-Bus library would start a bus.
    if (address.isEmpty())
        return answer(std::nullopt);
    // QtDBus would return a connection of that name again, even if its bus has gone.
    QDBusConnection::disconnectFromBus(name);
    auto *const watcher = new QFutureWatcher<Bus>(context);
    QObject::connect(watcher, &QFutureWatcherBase::finished, context, [watcher, answer = std::move(answer)] {
        watcher->deleteLater();
        answer(watcher->result());
    });
    watcher->setFuture(
        platform::unawaitedResult<Bus>([address, name] { return connectBlocking(address, name); }));
}

} // namespace burnwick
