// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "notify/NotificationManager.h"

#include "display/DisplayText.h"

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
    m_center.add({identifier, title, body}, [identifier](const auto &error) {
        if (error)
            qCCritical(notificationsLog, "Failed to deliver %s: %s", identifier.c_str(), error->c_str());
    });
}

void NotificationManager::checkQuota(const AccountFigures &account) {
    for (const auto &[identifier, title, body] : m_rules.dueAlerts(account))
        send(identifier, title, body);
}

void NotificationManager::checkPace(const UsageFigures &usage) {
    if (const auto alert = m_rules.duePaceAlert(usage))
        send(alert->identifier, alert->title, alert->body);
}

void NotificationManager::sendUpdateAvailable(std::string_view version) {
    send("updateAvailable", "Update Available",
         "Burnwick " + displayText(version) + " is available. Open Settings to update.");
}

} // namespace burnwick
