// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "notify/QuotaAlertRules.h"

#include "display/LimitText.h"
#include "model/Clock.h"
#include "model/QuotaWindow.h"
#include "platform/UserDefaults.h"
#include "prefs/PreferencesManager.h"

#include <QtCore/QByteArray>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdint>
#include <string>

namespace burnwick {

namespace {

constexpr QLatin1String alertedAt80Key("notif_alert80_windowId");
constexpr QLatin1String alertedRateLimitKey("notif_rateLimit_windowId");
constexpr QLatin1String alertedPaceKey("notif_pace_windowId");

/// Returns the shortest decimal without exponent that parses to the same number.
std::string plainDecimal(double number) {
    std::array<char, 320> text; // the largest number has 309 digits
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
    return {text.data(), end};
}

/// Returns the seconds since 1970 with at least one decimal, such as "1763300000.0".
std::string secondsText(Instant instant) {
    const auto sinceEpoch = instant.time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
    // Separately, because a double cannot represent the nanoseconds since 1970.
    const std::chrono::duration<double> fraction = sinceEpoch - seconds;
    const std::string text = plainDecimal(static_cast<double>(seconds.count()) + fraction.count());
    return text.find('.') == std::string::npos ? text + ".0" : text;
}

/// Parses a result of secondsText(); returns null for other text.
std::optional<Instant> instantIn(const std::string &text) {
    bool valid = false;
    const double seconds = QByteArray::fromStdString(text).toDouble(&valid);
    constexpr double limit = 9e9; // within the range of Instant
    // Unlike secondsText(), toDouble() also knows exponents and white space.
    valid = valid && text.find_first_not_of("-.0123456789") == std::string::npos;
    if (!valid || !(std::abs(seconds) < limit))
        return std::nullopt;
    return Instant(std::chrono::round<std::chrono::nanoseconds>(std::chrono::duration<double>(seconds)));
}

/// Returns a text such as "2h 5m", or "45m" below an hour. Ignores seconds; "0m" for an instant in the past.
std::string timeUntil(Instant resetAt, Instant now) {
    const std::uint64_t seconds = resetAt <= now ? 0 : nanosecondsBetween(now, resetAt) / 1'000'000'000;
    const std::string minutes = std::to_string(seconds % 3600 / 60) + "m";
    return seconds >= 3600 ? std::to_string(seconds / 3600) + "h " + minutes : minutes;
}

} // namespace

std::vector<UserNotification> QuotaAlertRules::dueAlerts(const AccountFigures &account) {
    std::vector<UserNotification> due;
    const auto &quota = account.quotaData;
    if (!quota || !quota->fiveHourResetAt)
        return due;
    const Instant resetAt = *quota->fiveHourResetAt;
    const Instant now = m_clock.now();
    const double usagePct = std::isfinite(quota->fiveHourUsagePct) ? quota->fiveHourUsagePct : 0;
    if (m_preferences.alertAt80Quota() && usagePct >= 80 && isFirstInWindow(alertedAt80Key, resetAt))
        due.push_back({"quota80", "Quota Alert",
                       "You've used " + plainDecimal(std::trunc(usagePct)) + "% of your 5-hour quota."});
    if (m_preferences.rateLimitAlerts() && usagePct >= 100 && isFirstInWindow(alertedRateLimitKey, resetAt))
        due.push_back({"rateLimit", "Rate Limit Reached",
                       "You've hit your rate limit. Quota resets in " + timeUntil(resetAt, now) + "."});
    if (m_lastKnownResetAt && isSameQuotaWindow(resetAt, *m_lastKnownResetAt))
        return due;
    if (m_lastKnownResetAt && m_preferences.sessionResetAlerts())
        due.push_back({"sessionReset-" + secondsText(now), "Session Reset",
                       "Your 5-hour quota has reset. You're ready to go!"});
    m_lastKnownResetAt = resetAt;
    return due;
}

std::optional<UserNotification> QuotaAlertRules::duePaceAlert(const UsageFigures &usage) {
    if (!m_preferences.paceAlerts())
        return std::nullopt;
    const auto course = std::ranges::find(usage.limitCourses, Limit::Kind::session,
                                          [](const LimitCourse &each) { return each.limit.kind; });
    if (course == usage.limitCourses.end() || !course->limit.resetsAt)
        return std::nullopt;
    const Forecast forecast = forecastOf(*course, m_clock.now());
    if (forecast.state != Forecast::State::expected || !forecast.fullAt)
        return std::nullopt;
    const Instant resetsAt = *course->limit.resetsAt;
    const std::string text =
        fullBeforeResetText(Limit::Kind::session, *forecast.fullAt, resetsAt, usage.calendar);
    if (text.empty() || !isFirstInWindow(alertedPaceKey, resetsAt))
        return std::nullopt;
    return UserNotification{"pace", "Pace Alert", "You will reach the limit " + text + "."};
}

/// Returns whether the key has no alert of this window yet, and stores the window.
bool QuotaAlertRules::isFirstInWindow(QLatin1String key, Instant resetAt) {
    const auto stored = m_defaults.get<QString>(key);
    const auto alerted = stored ? instantIn(stored->toStdString()) : std::nullopt;
    if (alerted && isSameQuotaWindow(resetAt, *alerted))
        return false;
    m_defaults.set(key, QString::fromStdString(secondsText(resetAt)));
    return true;
}

} // namespace burnwick
