// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "notify/NotificationManager.h"

#include "model/Clock.h"
#include "notify/QuotaAlertRules.h"
#include "platform/NotificationCenter.h"
#include "prefs/UserDefaults.h"

#include <QLatin1String>
#include <QLoggingCategory>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(notificationsLog, "Notifications")

constexpr QLatin1String alertedAt80Key("notif_alert80_windowId");
constexpr QLatin1String alertedRateLimitKey("notif_rateLimit_windowId");

std::optional<std::string> storedText(const UserDefaults &defaults, const QString &key) {
    const auto text = defaults.get<QString>(key);
    return text ? std::optional(text->toStdString()) : std::nullopt;
}

void logOutcome(const NotificationCenter::AuthorizationOutcome &outcome) {
    if (outcome.error)
        qCCritical(notificationsLog, "Authorization request failed: %s", outcome.error->c_str());
    else
        qCInfo(notificationsLog, "Notification authorization granted: %s",
               outcome.granted ? "true" : "false");
}

} // namespace

NotificationManager::NotificationManager(NotificationCenter &center, UserDefaults &defaults,
                                         const Clock &clock)
    : m_center(center)
    , m_defaults(defaults)
    , m_clock(clock) {}

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

void NotificationManager::checkQuota(std::optional<Instant> resetAt, bool alertAt80Enabled,
                                     bool rateLimitEnabled, double usagePct) {
    const alerts::QuotaCheck check{resetAt,
                                   usagePct,
                                   alertAt80Enabled,
                                   rateLimitEnabled,
                                   storedText(m_defaults, alertedAt80Key),
                                   storedText(m_defaults, alertedRateLimitKey)};
    for (const alerts::QuotaAlert alert : alerts::dueQuotaAlerts(check)) {
        const bool isRateLimit = alert == alerts::QuotaAlert::rateLimit;
        send(isRateLimit ? alerts::rateLimitAlert(resetAt, m_clock.now())
                         : alerts::eightyPercentAlert(usagePct));
        // Whether or not it will be delivered.
        m_defaults.set(isRateLimit ? alertedRateLimitKey : alertedAt80Key,
                       QString::fromStdString(alerts::windowIdOf(*resetAt)));
    }
}

void NotificationManager::sendSessionReset() {
    send(alerts::sessionResetAlert(m_clock.now()));
}

void NotificationManager::sendUpdateAvailable(std::string_view version) {
    send(alerts::updateAvailableAlert(version));
}

} // namespace burnwick
