// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeService.h"

#include <QtCore/QVariantMap>
#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusError>

#include <map>

namespace burnwick {

/// A desktop's notification server.
class FakeNotificationServer final : public FakeService {
public:
    struct Popup {
        QString application;
        QString icon;
        QString title;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int timeout = 0;
    };

    /// `firstNumber` is the first notification's number.
    explicit FakeNotificationServer(QString connectionName = QStringLiteral("fake-notifications"),
                                    uint firstNumber = 1)
        : FakeService(std::move(connectionName), name(), path())
        , m_nextNumber(firstNumber) {}

    QStringList capabilities{QStringLiteral("actions"), QStringLiteral("body"),
                             QStringLiteral("body-markup")};
    QStringList failing; ///< methods that reply with an error

    std::map<uint, Popup> popups; ///< the displayed ones, by number

    /// Removes the popup and sends the signal of that.
    void close(uint number) {
        constexpr uint dismissedByUser = 2;
        popups.erase(number);
        announce(QStringLiteral("NotificationClosed"), {number, dismissedByUser});
    }
    /// Sends the signals of a click; that of the token unless it is empty.
    void click(uint number, const QString &token = {}, const QString &action = QStringLiteral("default")) {
        if (!token.isEmpty())
            announce(QStringLiteral("ActivationToken"), {number, token});
        announce(QStringLiteral("ActionInvoked"), {number, action});
    }

private:
    static QString name() { return QStringLiteral("org.freedesktop.Notifications"); }
    static QString path() { return QStringLiteral("/org/freedesktop/Notifications"); }
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &message) override {
        if (failing.contains(message.member()))
            return message.createErrorReply(QStringLiteral("org.freedesktop.Notifications.Error"),
                                            QStringLiteral("too many notifications"));
        if (message.member() == QLatin1String("GetServerInformation"))
            return message.createReply({QStringLiteral("fake"), QStringLiteral("burnwick"),
                                        QStringLiteral("1"), QStringLiteral("1.2")});
        if (message.member() == QLatin1String("GetCapabilities"))
            return message.createReply(capabilities);
        if (message.signature() == QLatin1String("susssasa{sv}i"))
            return message.createReply(show(message.arguments()));
        return message.createErrorReply(QDBusError::UnknownMethod, message.member());
    }
    /// Accepts an unknown number to be replaced, as most servers do.
    [[nodiscard]] uint show(const QVariantList &arguments) {
        const uint replaced = arguments[1].toUInt();
        const uint number = replaced == 0 ? m_nextNumber++ : replaced;
        popups[number] = {arguments[0].toString(),     arguments[2].toString(),
                          arguments[3].toString(),     arguments[4].toString(),
                          arguments[5].toStringList(), qdbus_cast<QVariantMap>(arguments[6]),
                          arguments[7].toInt()};
        return number;
    }
    void announce(const QString &signal, const QVariantList &arguments) {
        QDBusMessage message = QDBusMessage::createSignal(path(), name(), signal);
        message.setArguments(arguments);
        static_cast<void>(connection().send(message));
    }

    uint m_nextNumber;
};

} // namespace burnwick
