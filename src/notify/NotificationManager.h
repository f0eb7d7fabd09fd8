// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "notify/QuotaAlerts.h"

#include <string>
#include <string_view>

namespace burnwick {

class Clock;
class NotificationCenter;
class UserDefaults;
struct UserNotification;

/// Posts the program's notifications, and remembers in the user-defaults store for which 5-hour window the
/// two quota alerts went out, so that each comes once in a window, also across restarts.
///
/// Nothing is reported to the caller: what could not be delivered is logged and not sent again. Outlived by
/// what it is made with. Main thread only.
class NotificationManager final : public QuotaAlerts {
public:
    NotificationManager(NotificationCenter &center, UserDefaults &defaults, const Clock &clock);

    /// Asks for permission to notify, and logs the outcome.
    void requestAuthorization();

    /// Shows a notification; an earlier one with the same identifier gives way to it. Plain text in UTF-8.
    void send(const std::string &identifier, const std::string &title, const std::string &body);

    void checkQuota(std::optional<Instant> resetAt, bool alertAt80Enabled, bool rateLimitEnabled,
                    double usagePct) override;
    void sendSessionReset() override;
    /// The version as it is displayed.
    void sendUpdateAvailable(std::string_view version);

private:
    void send(const UserNotification &notification);

    NotificationCenter &m_center;
    UserDefaults &m_defaults;
    const Clock &m_clock;
};

} // namespace burnwick
