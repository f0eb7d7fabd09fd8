// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "notify/QuotaAlertRules.h"

#include "display/DisplayText.h"
#include "model/QuotaWindow.h"

#include <array>
#include <charconv>
#include <chrono>
#include <cmath>
#include <cstdint>

namespace burnwick::alerts {

namespace {

/// As few digits as tell the number from its neighbours, without an exponent. For whole numbers and seconds.
std::string plainDecimal(double number) {
    std::array<char, 320> text; // the largest number has 309 digits
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed).ptr;
    return {text.data(), end};
}

/// Seconds since 1970 with at least one decimal.
std::string secondsText(Instant instant) {
    const auto sinceEpoch = instant.time_since_epoch();
    const auto seconds = std::chrono::floor<std::chrono::seconds>(sinceEpoch);
    // Apart, because a double cannot hold all the nanoseconds since 1970.
    const std::chrono::duration<double> fraction = sinceEpoch - seconds;
    const std::string text = plainDecimal(static_cast<double>(seconds.count()) + fraction.count());
    return text.find('.') == std::string::npos ? text + ".0" : text;
}

/// Whole seconds, 0 for an instant that is past.
std::uint64_t secondsUntil(Instant instant, Instant now) {
    if (instant <= now)
        return 0;
    return nanosecondsBetween(now, instant) / 1'000'000'000;
}

/// The instant in a window id; absent for any other text.
std::optional<Instant> instantIn(const std::string &windowId) {
    double seconds = 0;
    const char *textEnd = windowId.data() + windowId.size();
    const auto [end, error] = std::from_chars(windowId.data(), textEnd, seconds, std::chars_format::fixed);
    constexpr double limit = 9e9; // of an Instant, rounded down
    if (error != std::errc() || end != textEnd || !(std::abs(seconds) < limit))
        return std::nullopt;
    return Instant(std::chrono::round<std::chrono::nanoseconds>(std::chrono::duration<double>(seconds)));
}

bool wasSentIn(Instant resetAt, const std::optional<std::string> &windowId) {
    const auto known = windowId ? instantIn(*windowId) : std::nullopt;
    return known && isSameQuotaWindow(resetAt, *known);
}

} // namespace

std::vector<QuotaAlert> dueQuotaAlerts(const QuotaCheck &check) {
    std::vector<QuotaAlert> due;
    if (!check.resetAt || !std::isfinite(check.usagePct))
        return due;
    if (check.alertAt80Enabled && check.usagePct >= 80.0 && !wasSentIn(*check.resetAt, check.alertedAt80))
        due.push_back(QuotaAlert::eightyPercent);
    if (check.rateLimitEnabled && check.usagePct >= 100.0 &&
        !wasSentIn(*check.resetAt, check.alertedRateLimit))
        due.push_back(QuotaAlert::rateLimit);
    return due;
}

std::string windowIdOf(Instant resetAt) {
    return secondsText(resetAt);
}

std::string timeUntil(std::optional<Instant> resetAt, Instant now) {
    if (!resetAt)
        return "soon";
    const std::uint64_t seconds = secondsUntil(*resetAt, now);
    const std::string minutes = std::to_string(seconds % 3600 / 60) + "m";
    return seconds >= 3600 ? std::to_string(seconds / 3600) + "h " + minutes : minutes;
}

UserNotification eightyPercentAlert(double usagePct) {
    return {"quota80", "Quota Alert",
            "You've used " + plainDecimal(std::trunc(usagePct)) + "% of your 5-hour quota."};
}

UserNotification rateLimitAlert(std::optional<Instant> resetAt, Instant now) {
    return {"rateLimit", "Rate Limit Reached",
            "You've hit your rate limit. Quota resets in " + timeUntil(resetAt, now) + "."};
}

UserNotification sessionResetAlert(Instant now) {
    return {"sessionReset-" + secondsText(now), "Session Reset",
            "Your 5-hour quota has reset. You're ready to go!"};
}

UserNotification updateAvailableAlert(std::string_view version) {
    return {"updateAvailable", "Update Available",
            "Burnwick " + displayText(version) + " is available. Open Settings to update."};
}

} // namespace burnwick::alerts
