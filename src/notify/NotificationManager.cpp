// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "notify/NotificationManager.h"

#include <QLoggingCategory>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(notificationsLog, "Notifications")

void logOutcome(const NotificationCenter::AuthorizationOutcome &outcome) {
    if (outcome.error)
        qCCritical(notificationsLog, "Authorization request failed: %s", outcome.error->c_str());
    else
        qCInfo(notificationsLog, "Notification authorization granted: %s",
               outcome.granted ? "true" : "false");
}

} // namespace

void NotificationManager::requestAuthorization() {
    m_center.requestAuthorization(logOutcome);
}

void NotificationManager::send(const std::string &identifier, const std::string &title,
                               const std::string &body) {
    send(UserNotification{identifier, title, body});
}

void NotificationManager::send(const UserNotification &notification) {
    m_center.add(notification, [identifier = notification.identifier](const auto &error) {
        if (error)
            qCCritical(notificationsLog, "Failed to deliver %s: %s", identifier.c_str(), error->c_str());
    });
}

void NotificationManager::checkQuota(const AccountFigures &account) {
    for (const UserNotification &notification : m_rules.dueAlerts(account))
        send(notification);
}

void NotificationManager::sendUpdateAvailable(std::string_view version) {
    send(updateAvailableAlert(version));
}

} // namespace burnwick
