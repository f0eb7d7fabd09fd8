// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"
#include "platform/NotificationCenter.h"

#include <QtCore/QLatin1String>

#include <optional>
#include <vector>

namespace burnwick {

class Clock;
class PreferencesManager;
class UserDefaults;

/// Decides which notifications about the 5-hour window are due: one at 80 % and one at 100 %, and one when
/// the forecast says that the window will be full, each once per window also across restarts; and one when a
/// new window replaces an earlier one of this run. Main thread only.
class QuotaAlertRules final {
public:
    /// The referenced objects must outlive this one. `defaults` stores the windows of the quota alerts.
    QuotaAlertRules(const PreferencesManager &preferences, UserDefaults &defaults, const Clock &clock)
        : m_preferences(preferences)
        , m_defaults(defaults)
        , m_clock(clock) {}

    /// Returns the due notifications in the order of posting, and records them as sent. The list is empty
    /// without a reset instant; a usage that is not finite causes no quota alert.
    [[nodiscard]] std::vector<UserNotification> dueAlerts(const AccountFigures &account);
    /// Returns the notification that the forecast makes due, and records it as sent.
    [[nodiscard]] std::optional<UserNotification> duePaceAlert(const UsageFigures &usage);

private:
    [[nodiscard]] bool isFirstInWindow(QLatin1String key, Instant resetAt);

    const PreferencesManager &m_preferences;
    UserDefaults &m_defaults;
    const Clock &m_clock;
    std::optional<Instant> m_lastKnownResetAt; ///< the current window's first; null at start
};

} // namespace burnwick
