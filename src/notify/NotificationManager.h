// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "notify/QuotaAlertRules.h"

#include <string>
#include <string_view>

namespace burnwick {

/// Posts the program's notifications. Failures are logged only; an undelivered notification is not sent
/// again. Main thread only.
class NotificationManager final {
public:
    /// The referenced objects must outlive this one.
    NotificationManager(NotificationCenter &center, const PreferencesManager &preferences,
                        UserDefaults &defaults, const Clock &clock)
        : m_center(center)
        , m_rules(preferences, defaults, clock) {}

    /// Requests permission to notify, and logs the outcome.
    void requestAuthorization();

    /// Posts a notification, which replaces an earlier one with the same identifier. All texts are plain
    /// UTF-8.
    void send(const std::string &identifier, const std::string &title, const std::string &body);
    /// Posts the notifications that are due for the quota.
    void checkQuota(const AccountFigures &account);
    /// Posts the notification that is due for the forecast of the 5-hour window.
    void checkPace(const UsageFigures &usage);
    /// Posts a notification about a newer version, displayed as one line of plain text.
    void sendUpdateAvailable(std::string_view version);

private:
    NotificationCenter &m_center;
    QuotaAlertRules m_rules;
};

} // namespace burnwick
