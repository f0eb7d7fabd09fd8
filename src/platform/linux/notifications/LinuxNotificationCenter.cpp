// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/notifications/LinuxNotificationCenter.h"

#include "platform/Platform.h"
#include "platform/linux/notifications/NotificationSwitch.h"

#include <QtCore/QTimer>
#include <QtDBus/QDBusError>
#include <QtDBus/QDBusReply>

#include <utility>

namespace burnwick {

/// A notification until the server's reply, which may follow the caller's answer.
struct LinuxNotificationCenter::Delivery {
    UserNotification notification;
    std::function<void(std::optional<std::string> error)> answer; ///< null after its call
    bool isReplacement = false; ///< sent with the number of an earlier notification
    QTimer timer{};

    /// Answers the caller; ignores later calls.
    void settle(std::optional<std::string> error) {
        timer.stop();
        if (const auto first = std::exchange(answer, nullptr))
            first(std::move(error));
    }
};

LinuxNotificationCenter::LinuxNotificationCenter(const QDBusConnection &bus, std::chrono::milliseconds limit)
    : m_limit(limit)
    , m_server(bus) {
    QObject::connect(&m_server, &NotificationServer::ownerChanged, &m_lifetime, [this] {
        m_numbers.clear();
        m_clickable.clear();
        if (m_authorizationChanged)
            m_authorizationChanged();
    });
    QObject::connect(&m_server, &NotificationServer::closed, &m_lifetime,
                     [this](uint id) { forgetNumber(id); });
    QObject::connect(&m_server, &NotificationServer::clicked, &m_lifetime,
                     [this](uint id, const QString &activationToken) { click(id, activationToken); });
}

LinuxNotificationCenter::~LinuxNotificationCenter() = default;

void LinuxNotificationCenter::readAuthorization(std::function<void(Authorization)> answer) {
    // Does not start a server: the end of one is announced, which leads to this call again.
    findOutAuthorization(false, [answer = std::move(answer)](Authorization authorization, const QString &) {
        answer(authorization);
    });
}

void LinuxNotificationCenter::requestAuthorization(std::function<void(AuthorizationOutcome)> answer) {
    findOutAuthorization(
        true, [answer = std::move(answer)](Authorization authorization, const QString &problem) {
            AuthorizationOutcome outcome{authorization == Authorization::authorized, std::nullopt};
            if (authorization == Authorization::notDetermined)
                outcome.error = problem.toStdString();
            answer(outcome);
        });
}

void LinuxNotificationCenter::setAuthorizationChangedHandler(std::function<void()> handler) {
    m_authorizationChanged = std::move(handler);
}

void LinuxNotificationCenter::setActivateHandler(ActivateHandler handler) {
    m_activate = std::move(handler);
}

void LinuxNotificationCenter::findOutAuthorization(bool mayStartServer, AuthorizationAndProblem answer) {
    askForNotificationSwitch(&m_lifetime, m_limit,
                             [this, mayStartServer, answer = std::move(answer)](bool switchedOff) {
                                 if (switchedOff)
                                     answer(Authorization::denied, {});
                                 else
                                     askServer(mayStartServer, answer);
                             });
}

void LinuxNotificationCenter::askServer(bool mayStartServer, AuthorizationAndProblem answer) {
    m_server.ping(
        mayStartServer, m_limit, [this, answer = std::move(answer)](const QDBusMessage &replyOrError, bool) {
            if (replyOrError.type() == QDBusMessage::ReplyMessage) {
                m_hasReplied = true;
                return answer(Authorization::authorized, {});
            }
            const QString problem = replyOrError.errorMessage();
            if (!m_hasReplied || !m_server.owner().isEmpty())
                return answer(Authorization::notDetermined, problem);
            m_server.findOutWhetherStartable(m_limit, [answer, problem](bool startable) {
                answer(startable ? Authorization::authorized : Authorization::notDetermined, problem);
            });
        });
}

void LinuxNotificationCenter::add(const UserNotification &notification,
                                  std::function<void(std::optional<std::string> error)> answer) {
    auto &deliveries = m_deliveries[notification.identifier];
    auto &delivery = *deliveries.emplace_back(new Delivery{notification, std::move(answer)});
    delivery.timer.setSingleShot(true);
    QObject::connect(&delivery.timer, &QTimer::timeout, &delivery.timer,
                     [&delivery] { delivery.settle("the notification server takes too long"); });
    delivery.timer.start(m_limit);
    if (deliveries.size() == 1)
        deliverNext(notification.identifier);
}

void LinuxNotificationCenter::deliverNext(const std::string &identifier) {
    m_server.readCapabilities([this, identifier](const NotificationServer::Capabilities &capabilities) {
        deliver(identifier, capabilities);
    });
}

void LinuxNotificationCenter::deliver(const std::string &identifier,
                                      const NotificationServer::Capabilities &capabilities) {
    Delivery &delivery = *m_deliveries.at(identifier).front();
    // A notification that was reported as failed is not shown later.
    if (!delivery.answer)
        return removeFirst(identifier);
    const auto number = m_numbers.find(identifier);
    delivery.isReplacement = number != m_numbers.end();
    m_server.notify(delivery.notification, delivery.isReplacement ? number->second : 0, capabilities,
                    [this, identifier](const QDBusMessage &answer, bool fromOwner) {
                        takeAnswer(identifier, answer, fromOwner);
                    });
}

void LinuxNotificationCenter::takeAnswer(const std::string &identifier, const QDBusMessage &answer,
                                         bool fromOwner) {
    const QDBusReply<uint> number(answer);
    Delivery &delivery = *m_deliveries.at(identifier).front();
    // The server had ended before its end was announced. Sends a new notification instead of a replacement.
    if (!number.isValid() && delivery.isReplacement && !m_numbers.contains(identifier))
        return deliverNext(identifier);
    if (number.isValid() && fromOwner) {
        m_numbers[identifier] = number.value();
        m_clickable.insert(number.value());
    }
    delivery.settle(number.isValid() ? std::nullopt : std::optional(number.error().message().toStdString()));
    removeFirst(identifier);
}

void LinuxNotificationCenter::removeFirst(const std::string &identifier) {
    const auto deliveries = m_deliveries.find(identifier);
    deliveries->second.pop_front();
    if (deliveries->second.empty())
        m_deliveries.erase(deliveries);
    else
        deliverNext(identifier);
}

/// Keeps it clickable: a server may list notifications that disappeared.
void LinuxNotificationCenter::forgetNumber(uint id) {
    std::erase_if(m_numbers, [id](const auto &number) { return number.second == id; });
}

void LinuxNotificationCenter::click(uint id, const QString &activationToken) {
    // Some servers announce a click twice.
    if (m_clickable.remove(id) && m_activate)
        m_activate(activationToken.toStdString());
}

std::unique_ptr<NotificationCenter> platform::makeNotificationCenter() {
    return std::make_unique<LinuxNotificationCenter>();
}

} // namespace burnwick
