// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"
#include "platform/NotificationCenter.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the user is alerted to, and in which words. Pure functions.
namespace burnwick::alerts {

/// The two alerts on the 5-hour window's usage; each comes at most once in a window.
enum class QuotaAlert { eightyPercent, rateLimit };

/// One look at the 5-hour window, and for which windows alerts went out before.
struct QuotaCheck {
    std::optional<Instant> resetAt; ///< absent while it is unknown
    double usagePct = 0;
    bool alertAt80Enabled = false;
    bool rateLimitEnabled = false;
    std::optional<std::string> alertedAt80;      ///< window id
    std::optional<std::string> alertedRateLimit; ///< window id
};

/// The alerts that are due, in the order in which they are to be sent. None for a usage that is no number.
[[nodiscard]] std::vector<QuotaAlert> dueQuotaAlerts(const QuotaCheck &check);

/// The 5-hour window that ends then as a text to be stored, such as "1763300000.0". The texts of one window's
/// answers may differ; dueQuotaAlerts() compares them as instants.
[[nodiscard]] std::string windowIdOf(Instant resetAt);

/// "2h 5m" or "45m" until then, "0m" when it is past, "soon" when it is unknown. Seconds are cut off.
[[nodiscard]] std::string timeUntil(std::optional<Instant> resetAt, Instant now);

/// The usage, a finite number, is cut to a whole one.
[[nodiscard]] UserNotification eightyPercentAlert(double usagePct);
[[nodiscard]] UserNotification rateLimitAlert(std::optional<Instant> resetAt, Instant now);
/// A notification of its own for each instant.
[[nodiscard]] UserNotification sessionResetAlert(Instant now);
[[nodiscard]] UserNotification updateAvailableAlert(std::string_view version);

} // namespace burnwick::alerts
