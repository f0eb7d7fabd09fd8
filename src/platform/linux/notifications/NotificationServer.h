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

/// The desktop's notification server on the session bus (org.freedesktop.Notifications), whichever it is at
/// the moment. Nothing blocks; answers are dropped when this object is destroyed first.
class NotificationServer final : public QObject {
    Q_OBJECT

public:
    struct Capabilities {
        bool bodyMarkup = false;
        bool actions = false;
    };
    /// `fromOwner` is whether the server that answers is known to run still, as owner().
    using Answer = std::function<void(const QDBusMessage &replyOrError, bool fromOwner)>;

    explicit NotificationServer(const QDBusConnection &bus);

    /// The unique name of the running server; empty when none runs.
    [[nodiscard]] QString owner() const { return m_owner.name(); }

    /// Whether a server answers; one that does not run is started only if `mayStart`. Later than `limit` is
    /// an error.
    void ping(bool mayStart, std::chrono::milliseconds limit, Answer answer);
    /// Whether the bus would start a server that does not run.
    void findOutWhetherStartable(std::chrono::milliseconds limit, std::function<void(bool startable)> answer);

    /// What the server can do, asked once of each; possibly answered before the call returns. Starts a
    /// server.
    void readCapabilities(std::function<void(const Capabilities &capabilities)> answer);
    /// Shows a notification in place of that number, of the running server's, or a new one for 0. Starts a
    /// server for a new one. The reply holds the number, a uint.
    void notify(const UserNotification &notification, uint replacedId, const Capabilities &capabilities,
                Answer answer);

Q_SIGNALS:
    /// Another server runs, or none any more: earlier numbers mean nothing now.
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
    void whenAnswered(const QDBusPendingCall &call, Answer answer);

    QDBusConnection m_bus;
    ServiceOwner m_owner;
    QString m_followed; ///< whose signals are received
    int m_ownersSeen = 0;
    std::optional<Capabilities> m_capabilities;
    Token m_token; ///< for the click that comes next
};

} // namespace burnwick
