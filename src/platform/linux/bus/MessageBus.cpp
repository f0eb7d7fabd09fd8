// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/bus/MessageBus.h"

#include <QtDBus/QDBusMessage>

namespace burnwick {

QDBusPendingCall callMessageBus(const QDBusConnection &connection, const QString &method,
                                const QVariantList &arguments, std::chrono::milliseconds limit) {
    QDBusMessage call = QDBusMessage::createMethodCall(QStringLiteral("org.freedesktop.DBus"),
                                                       QStringLiteral("/org/freedesktop/DBus"),
                                                       QStringLiteral("org.freedesktop.DBus"), method);
    call.setArguments(arguments);
    return connection.asyncCall(call, static_cast<int>(limit.count()));
}

} // namespace burnwick
