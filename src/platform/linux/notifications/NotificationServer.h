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

/// The current owner of org.freedesktop.Notifications on the session bus. Calls do not block; answers are
/// dropped when this object is destroyed first.
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

    /// Returns the unique name of the running server; empty when none runs.
    [[nodiscard]] QString owner() const { return m_owner.name(); }

    /// Calls the server, and answers with its reply, or with an error, also when there is no reply within
    /// `limit`. Starts a server only if `mayStart`.
    void ping(bool mayStart, std::chrono::milliseconds limit, Answer answer);
    /// Answers whether the bus can start a server.
    void findOutWhetherStartable(std::chrono::milliseconds limit, std::function<void(bool startable)> answer);

    /// Answers with the server's capabilities, which are read once from each server; possibly before the call
    /// returns. Starts a server.
    void readCapabilities(std::function<void(const Capabilities &capabilities)> answer);
    /// Replaces the running server's notification `replacedId`; 0 shows a new one, and starts a server. The
    /// reply is the number, a uint.
    void notify(const UserNotification &notification, uint replacedId, const Capabilities &capabilities,
                Answer answer);

Q_SIGNALS:
    /// Emitted when another server runs, and when none runs any more: earlier numbers are invalid.
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
