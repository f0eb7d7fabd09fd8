// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/bus/SessionBus.h"

#include "async/DetachedThreadResult.h"
#include "platform/Platform.h"

#include <QtCore/QByteArray>
#include <QtCore/QFileInfo>
#include <QtCore/QLoggingCategory>
#include <QtCore/QPromise>
#include <QtCore/QUrl>

#include <future>
#include <memory>
#include <utility>

#include <dbus/dbus.h>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(busLog, "burnwick.bus")

/// Connects, sends a client's first message and disconnects. Blocks without limit until the bus has
/// authenticated the client. dbus_bus_register() would block all other connections of the process meanwhile.
void sayHello(const QByteArray &address, std::chrono::milliseconds limit) {
    DBusConnection *const connection = dbus_connection_open_private(address.constData(), nullptr);
    if (connection == nullptr)
        return;
    DBusMessage *const hello =
        dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "Hello");
    DBusMessage *const reply = dbus_connection_send_with_reply_and_block(
        connection, hello, static_cast<int>(limit.count()), nullptr);
    if (reply != nullptr)
        dbus_message_unref(reply);
    dbus_message_unref(hello);
    dbus_connection_close(connection);
    dbus_connection_unref(connection);
}

using Bus = std::optional<QDBusConnection>;

/// QtFuture's function for it was renamed in Qt 6.6.
QFuture<Bus> readyFuture(Bus bus) {
    QPromise<Bus> promise;
    promise.start();
    promise.addResult(std::move(bus));
    promise.finish();
    return promise.future();
}

} // namespace

QString sessionBusAddress() {
    if (const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty())
        return QString::fromLocal8Bit(address);
    const QByteArray runtimeDirectory = qgetenv("XDG_RUNTIME_DIR");
    const QString socket = QString::fromLocal8Bit(runtimeDirectory) + QStringLiteral("/bus");
    if (runtimeDirectory.isEmpty() || !QFileInfo::exists(socket))
        return {};
    // In addresses a tilde, a comma and others are escaped.
    return QStringLiteral("unix:path=") + QString::fromLatin1(QUrl::toPercentEncoding(
                                              socket, QByteArrayLiteral("/"), QByteArrayLiteral("~")));
}

bool isSilentBus(const QString &address, std::chrono::milliseconds limit) {
    if (address.isEmpty())
        return false;
    const auto replied = std::make_shared<std::promise<void>>();
    const auto end = replied->get_future();
    platform::runDetachedThread([replied, bus = address.toLocal8Bit(), limit] {
        sayHello(bus, 2 * limit);
        replied->set_value();
    });
    return end.wait_for(limit) == std::future_status::timeout;
}

QFuture<Bus> connectToBus(const QString &address, const QString &name) {
    if (const QDBusConnection present(name); present.isConnected())
        return readyFuture(present);
    if (address.isEmpty())
        return readyFuture(std::nullopt);
    // Otherwise QtDBus would return the earlier connection of that name, whose bus has ended.
    QDBusConnection::disconnectFromBus(name);
    return detachedThreadResult<Bus>([address, name]() -> Bus {
        // QtDBus would wait for a silent bus without limit, and block all other connections meanwhile.
        if (isSilentBus(address, silentBusLimit))
            return std::nullopt;
        const auto bus = QDBusConnection::connectToBus(address, name);
        return bus.isConnected() ? Bus(bus) : std::nullopt;
    });
}

/// Blocks, because Qt itself may call the bus in the constructor of the application object (under Plasma it
/// does), and a connection that hangs blocks all others of the process.
void disableUnresponsiveBus() {
    if (!isSilentBus(sessionBusAddress(), silentBusLimit))
        return;
    qCWarning(busLog, "The session bus does not answer and is done without until the next start: no status "
                      "item on it, no notifications, no knowledge of another instance");
    // Qt reads it once; child processes inherit it, and would hang as well.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

} // namespace burnwick
