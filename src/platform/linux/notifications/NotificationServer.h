// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/NotificationCenter.h"
#include "platform/linux/bus/ServiceOwner.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCall>

#include <chrono>
#include <functional>
#include <optional>

namespace burnwick {

/// The desktop's notification server on the session bus (org.freedesktop.Notifications), which may be another
/// one later. Nothing blocks; answers are dropped when this object is destroyed first.
class NotificationServer final : public QObject {
    Q_OBJECT

public:
    struct Capabilities {
        bool bodyMarkup = false;
        bool actions = false;
    };
    /// `fromOwner`: the server that replied is still owner().
    using Answer = std::function<void(const QDBusMessage &replyOrError, bool fromOwner)>;

    explicit NotificationServer(const QDBusConnection &bus);

    /// Returns the unique name of the running server; empty without one.
    [[nodiscard]] QString owner() const { return m_owner.name(); }

    /// Calls the server, and answers with its reply or an error. Starts a server only if `mayStart`. A reply
    /// after `limit` is an error.
    void ping(bool mayStart, std::chrono::milliseconds limit, Answer answer);
    /// Answers whether the bus can start a server.
    void findOutWhetherStartable(std::chrono::milliseconds limit, std::function<void(bool startable)> answer);

    /// Answers with the server's capabilities, read once from each; possibly before the call returns. Starts
    /// a server.
    void readCapabilities(std::function<void(const Capabilities &capabilities)> answer);
    /// Shows a notification in place of the running server's one of that number, or a new one for 0, for
    /// which a server is started. The reply is the number, a uint.
    void notify(const UserNotification &notification, uint replacedId, const Capabilities &capabilities,
                Answer answer);

Q_SIGNALS:
    /// Emitted when another server runs, or none any more: earlier numbers are invalid.
    void ownerChanged();
    void closed(uint id);
    void clicked(uint id, const QString &activationToken);

private Q_SLOTS:
    void onActivationToken(uint id, const QString &token);
    void onActionInvoked(uint id, const QString &action);
    void onNotificationClosed(uint id, uint reason);

private:
    struct Token {
        uint id = 0;
        QString text;
    };

    void followSignalsOf(const QString &owner);
    void answerWhenFinished(const QDBusPendingCall &call, Answer answer);

    QDBusConnection m_bus;
    ServiceOwner m_owner;
    QString m_followed; ///< the server whose signals are received
    int m_ownersSeen = 0;
    std::optional<Capabilities> m_capabilities;
    Token m_token; ///< of the next click
};

} // namespace burnwick
