// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/notifications/NotificationServer.h"

#include "platform/linux/bus/BusCall.h"

#include <QtCore/QStringList>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusReply>

#include <utility>

namespace burnwick {

namespace {

constexpr QLatin1String serverName("org.freedesktop.Notifications");
constexpr QLatin1String serverPath("/org/freedesktop/Notifications");
constexpr QLatin1String defaultAction("default"); ///< a click on the notification

QDBusMessage messageTo(const QString &peer, const QString &method) {
    return QDBusMessage::createMethodCall(peer, serverPath, serverName, method);
}

/// By the freedesktop.org specifications of notifications and of sound names.
QVariantMap hints() {
    constexpr uchar normalUrgency = 1;
    return {{QStringLiteral("desktop-entry"), QStringLiteral("burnwick")},
            {QStringLiteral("sound-name"), QStringLiteral("message-new-instant")},
            {QStringLiteral("urgency"), QVariant::fromValue(normalUrgency)}};
}

} // namespace

NotificationServer::NotificationServer(const QDBusConnection &bus)
    : m_bus(bus)
    , m_owner(bus, serverName) {
    connect(&m_owner, &ServiceOwner::changed, this, [this](const QString &owner) {
        followSignalsOf(owner);
        m_ownersSeen += owner.isEmpty() ? 0 : 1;
        m_capabilities.reset();
        m_token = {};
        Q_EMIT ownerChanged();
    });
}

void NotificationServer::ping(bool mayStart, std::chrono::milliseconds limit, Answer answer) {
    QDBusMessage call = messageTo(serverName, QStringLiteral("GetServerInformation"));
    call.setAutoStartService(mayStart);
    answerWhenFinished(m_bus.asyncCall(call, static_cast<int>(limit.count())), std::move(answer));
}

void NotificationServer::findOutWhetherStartable(std::chrono::milliseconds limit,
                                                 std::function<void(bool startable)> answer) {
    answerWhenFinished(callMessageBus(m_bus, QStringLiteral("ListActivatableNames"), {}, limit),
                       [answer = std::move(answer)](const QDBusMessage &message, bool) {
                           const QDBusReply<QStringList> names(message);
                           answer(names.isValid() && names.value().contains(serverName));
                       });
}

void NotificationServer::readCapabilities(std::function<void(const Capabilities &capabilities)> answer) {
    if (m_capabilities)
        return answer(*m_capabilities);
    answerWhenFinished(m_bus.asyncCall(messageTo(serverName, QStringLiteral("GetCapabilities"))),
                       [this, answer = std::move(answer)](const QDBusMessage &message, bool fromOwner) {
                           const QDBusReply<QStringList> names(message);
                           // Without a reply, the server may read markup: the text is escaped.
                           Capabilities capabilities{!names.isValid(), false};
                           if (names.isValid()) {
                               // Links are markup: dunst without a setting for markup announces only links,
                               // and reads all markup.
                               capabilities = {names.value().contains(QLatin1String("body-markup")) ||
                                                   names.value().contains(QLatin1String("body-hyperlinks")),
                                               names.value().contains(QLatin1String("actions"))};
                               if (fromOwner)
                                   m_capabilities = capabilities;
                           }
                           answer(capabilities);
                       });
}

void NotificationServer::notify(const UserNotification &notification, uint replacedId,
                                const Capabilities &capabilities, Answer answer) {
    const QString body = QString::fromStdString(notification.body);
    const QStringList actions =
        capabilities.actions ? QStringList{defaultAction, QStringLiteral("Open")} : QStringList();
    constexpr int untilServerDecides = -1;
    // A number is sent only to the server that assigned it: another server may have assigned the same one to
    // another program's notification.
    QDBusMessage call = messageTo(replacedId == 0 ? serverName : owner(), QStringLiteral("Notify"));
    call.setArguments({QStringLiteral("Burnwick"), replacedId, QStringLiteral("burnwick"),
                       QString::fromStdString(notification.title),
                       capabilities.bodyMarkup ? body.toHtmlEscaped() : body, actions, hints(),
                       untilServerDecides});
    answerWhenFinished(m_bus.asyncCall(call), std::move(answer));
}

/// Receives them by the unique name only: other programs may send the same signals.
void NotificationServer::followSignalsOf(const QString &owner) {
    const std::pair<const char *, const char *> signalsAndSlots[] = {
        {"ActivationToken", SLOT(onActivationToken(uint, QString))},
        {"ActionInvoked", SLOT(onActionInvoked(uint, QString))},
        {"NotificationClosed", SLOT(onNotificationClosed(uint, uint))},
    };
    for (const auto &[signal, slot] : signalsAndSlots) {
        if (!m_followed.isEmpty())
            m_bus.disconnect(m_followed, serverPath, serverName, QLatin1String(signal), this, slot);
        if (!owner.isEmpty())
            m_bus.connect(owner, serverPath, serverName, QLatin1String(signal), this, slot);
    }
    m_followed = owner;
}

/// Since Qt 6.8 a reply does not name its sender. The bus announces an owner before it passes on that owner's
/// replies: the owner replied if it is the one known at the call or the first one since then.
void NotificationServer::answerWhenFinished(const QDBusPendingCall &call, Answer answer) {
    const int ownersExpected = m_ownersSeen + (owner().isEmpty() ? 1 : 0);
    whenFinished(call, this, [this, ownersExpected, answer = std::move(answer)](const QDBusMessage &reply) {
        answer(reply, m_ownersSeen == ownersExpected && !owner().isEmpty());
    });
}

void NotificationServer::onActivationToken(uint id, const QString &token) {
    m_token = {id, token};
}

void NotificationServer::onActionInvoked(uint id, const QString &action) {
    const Token token = std::exchange(m_token, {});
    if (action == defaultAction)
        Q_EMIT clicked(id, token.id == id ? token.text : QString());
}

void NotificationServer::onNotificationClosed(uint id, uint) {
    Q_EMIT closed(id);
}

} // namespace burnwick
