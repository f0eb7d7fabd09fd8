// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/FakeNotificationServer.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusError>

namespace burnwick {

namespace {

const QString serverName = QStringLiteral("org.freedesktop.Notifications");
const QString serverPath = QStringLiteral("/org/freedesktop/Notifications");

} // namespace

FakeNotificationServer::FakeNotificationServer(QString connectionName, uint firstNumber)
    : FakeService(std::move(connectionName), serverName, serverPath)
    , m_nextNumber(firstNumber) {}

void FakeNotificationServer::close(uint number) {
    constexpr uint dismissedByUser = 2;
    popups.erase(number);
    announce(QStringLiteral("NotificationClosed"), {number, dismissedByUser});
}

void FakeNotificationServer::click(uint number, const QString &token, const QString &action) {
    if (!token.isEmpty())
        announce(QStringLiteral("ActivationToken"), {number, token});
    announce(QStringLiteral("ActionInvoked"), {number, action});
}

QDBusMessage FakeNotificationServer::answerTo(const QDBusMessage &message) {
    if (failing.contains(message.member()))
        return message.createErrorReply(QStringLiteral("org.freedesktop.Notifications.Error"),
                                        QStringLiteral("too many notifications"));
    if (message.member() == QLatin1String("GetServerInformation"))
        return message.createReply(
            {QStringLiteral("fake"), QStringLiteral("burnwick"), QStringLiteral("1"), QStringLiteral("1.2")});
    if (message.member() == QLatin1String("GetCapabilities"))
        return message.createReply(capabilities);
    if (message.signature() == QLatin1String("susssasa{sv}i"))
        return message.createReply(show(message.arguments()));
    return message.createErrorReply(QDBusError::UnknownMethod, message.member());
}

/// Accepts an unknown number to be replaced, as most servers do.
uint FakeNotificationServer::show(const QVariantList &arguments) {
    const uint replaced = arguments[1].toUInt();
    const uint number = replaced == 0 ? m_nextNumber++ : replaced;
    popups[number] = {arguments[0].toString(),     arguments[2].toString(),
                      arguments[3].toString(),     arguments[4].toString(),
                      arguments[5].toStringList(), qdbus_cast<QVariantMap>(arguments[6]),
                      arguments[7].toInt()};
    return number;
}

void FakeNotificationServer::announce(const QString &signal, const QVariantList &arguments) {
    QDBusMessage message = QDBusMessage::createSignal(serverPath, serverName, signal);
    message.setArguments(arguments);
    static_cast<void>(connection().send(message));
}

} // namespace burnwick
