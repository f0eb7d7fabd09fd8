// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/NotificationCenter.h"
#include "platform/linux/notifications/NotificationServer.h"

#include <QtCore/QObject>
#include <QtCore/QSet>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

#include <chrono>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace burnwick {

/// Notifications through the desktop's server (see NotificationServer.h). Authorized when a server replies,
/// or when one has replied and the bus can start it again. Denied by the switch of NotificationSwitch.h.
class LinuxNotificationCenter final : public NotificationCenter {
public:
    /// `limit` is for each reply of the server and of the desktop's settings.
    explicit LinuxNotificationCenter(const QDBusConnection &bus = QDBusConnection::sessionBus(),
                                     std::chrono::milliseconds limit = std::chrono::seconds(3));
    ~LinuxNotificationCenter() override;

    /// Starts no server.
    void readAuthorization(std::function<void(Authorization)> answer) override;
    /// Does not ask the user: a server that replies is enough.
    void requestAuthorization(std::function<void(AuthorizationOutcome)> answer) override;
    void setAuthorizationChangedHandler(std::function<void()> handler) override;
    void add(const UserNotification &notification,
             std::function<void(std::optional<std::string> error)> answer) override;
    void setActivateHandler(ActivateHandler handler) override;

private:
    struct Delivery;
    using AuthorizationAndProblem = std::function<void(Authorization, const QString &problem)>;

    void findOutAuthorization(bool mayStartServer, AuthorizationAndProblem answer);
    void askServer(bool mayStartServer, AuthorizationAndProblem answer);
    void deliverNext(const std::string &identifier);
    void deliver(const std::string &identifier, const NotificationServer::Capabilities &capabilities);
    void takeAnswer(const std::string &identifier, const QDBusMessage &answer, bool fromOwner);
    void removeFirst(const std::string &identifier);
    void forgetNumber(uint id);
    void click(uint id, const QString &activationToken);

    std::chrono::milliseconds m_limit;
    std::function<void()> m_authorizationChanged;
    ActivateHandler m_activate;
    bool m_hasReplied = false; ///< any server, at any time
    /// By identifier. The first of each is being sent; the second replaces it by the number in its reply.
    std::map<std::string, std::deque<std::unique_ptr<Delivery>>> m_deliveries;
    std::map<std::string, uint> m_numbers; ///< by identifier: the running server's, while displayed
    QSet<uint> m_clickable;                ///< the running server's numbers that were not clicked yet
    NotificationServer m_server;
    QObject m_lifetime; ///< its destruction drops answers
};

} // namespace burnwick
