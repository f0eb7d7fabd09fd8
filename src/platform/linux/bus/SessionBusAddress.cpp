// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/bus/SessionBusAddress.h"

#include "platform/Process.h"

#include <QtCore/QByteArray>
#include <QtCore/QFileInfo>
#include <QtCore/QUrl>

#include <future>
#include <memory>

#include <dbus/dbus.h>

namespace burnwick {

namespace {

/// Connects as each client does, and leaves again. Blocks without limit until the client is authenticated.
/// dbus_bus_register() would keep all other connections of the process waiting meanwhile.
void introduceTo(const QByteArray &busAddress, std::chrono::milliseconds answerLimit) {
    DBusConnection *const connection = dbus_connection_open_private(busAddress.constData(), nullptr);
    if (connection == nullptr)
        return;
    DBusMessage *const hello =
        dbus_message_new_method_call(DBUS_SERVICE_DBUS, DBUS_PATH_DBUS, DBUS_INTERFACE_DBUS, "Hello");
    DBusMessage *const answer = dbus_connection_send_with_reply_and_block(
        connection, hello, static_cast<int>(answerLimit.count()), nullptr);
    if (answer != nullptr)
        dbus_message_unref(answer);
    dbus_message_unref(hello);
    dbus_connection_close(connection);
    dbus_connection_unref(connection);
}

} // namespace

QString sessionBusAddress() {
    if (const QByteArray address = qgetenv("DBUS_SESSION_BUS_ADDRESS"); !address.isEmpty())
        return QString::fromLocal8Bit(address);
    const QByteArray runtimeDirectory = qgetenv("XDG_RUNTIME_DIR");
    const QString socket = QString::fromLocal8Bit(runtimeDirectory) + QStringLiteral("/bus");
    if (runtimeDirectory.isEmpty() || !QFileInfo::exists(socket))
        return {};
    // Addresses have a tilde and some others escaped.
    return QStringLiteral("unix:path=") + QString::fromLatin1(QUrl::toPercentEncoding(
                                              socket, QByteArrayLiteral("/"), QByteArrayLiteral("~")));
}

bool isSilentBus(const QString &address, std::chrono::milliseconds limit) {
    if (address.isEmpty())
        return false;
    const auto introduced = std::make_shared<std::promise<void>>();
    const auto end = introduced->get_future();
    platform::runUnawaited([introduced, bus = address.toLocal8Bit(), limit] {
        introduceTo(bus, 2 * limit);
        introduced->set_value();
    });
    return end.wait_for(limit) == std::future_status::timeout;
}

} // namespace burnwick
