// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/DisplayFormat.h"

#include <array>
#include <charconv>
#include <utility>

namespace burnwick {

std::string fixedText(double value, int decimals) {
    // Unlike printf, without the locale's decimal comma. The longest double has 309 digits before the point.
    std::array<char, 400> buffer{};
    const auto [end, error] = std::to_chars(buffer.data(), buffer.data() + buffer.size(), value,
                                            std::chars_format::fixed, decimals);
    return {buffer.data(), error == std::errc() ? end : buffer.data()};
}

std::string tokenCountText(std::int64_t count) {
    if (count < 1'000)
        return std::to_string(count);
    if (count < 1'000'000)
        return fixedText(static_cast<double>(count) / 1e3, 1) + 'K';
    return fixedText(static_cast<double>(count) / 1e6, 1) + 'M';
}

std::string countText(std::int64_t count, std::string_view noun) {
    std::string text = std::to_string(count);
    for (std::size_t i = text.size(); i > 3;)
        text.insert(i -= 3, 1, ',');
    text += ' ';
    text += noun;
    return count == 1 ? text : text + 's';
}

std::string costText(double dollars) {
    const bool belowOneCent = dollars > 0 && dollars < 0.01;
    return '$' + fixedText(dollars, belowOneCent ? 4 : 2);
}

std::string burnRateText(double tokensPerMin) {
    if (tokensPerMin >= 1000)
        return fixedText(tokensPerMin / 1000, 1) + "K tokens/min";
    return fixedText(tokensPerMin, 0) + " tokens/min";
}

std::string percentText(double pct) {
    return fixedText(pct, 0) + '%';
}

std::string timeRemainingText(Instant until, Instant now) {
    if (until <= now)
        return "Now";
    constexpr std::int64_t secondsPerHour = 3600;
    constexpr std::int64_t hoursShownUntil = 172'800; // 48 hours
    const std::int64_t seconds = std::chrono::floor<std::chrono::seconds>(until - now).count();
    const std::int64_t hours = seconds / secondsPerHour;
    std::string minutes = std::to_string(seconds / 60 % 60) + 'm';
    if (seconds < secondsPerHour)
        return minutes;
    if (seconds < hoursShownUntil)
        return std::to_string(hours) + "h " + minutes;
    return std::to_string(hours / 24) + "d " + std::to_string(hours % 24) + 'h';
}

std::string resetText(const std::optional<Instant> &resetAt, Instant now) {
    if (!resetAt)
        return {};
    return *resetAt <= now ? "resets now" : "resets in " + timeRemainingText(*resetAt, now);
}

std::string inOutText(std::int64_t inputTokens, std::int64_t outputTokens) {
    return tokenCountText(inputTokens) + " in · " + tokenCountText(outputTokens) + " out";
}

std::string relativeAgeText(Instant since, Instant now) {
    constexpr std::int64_t minute = 60;
    constexpr std::int64_t hour = 60 * minute;
    const std::int64_t seconds = std::chrono::duration_cast<std::chrono::seconds>(now - since).count();
    if (seconds < minute)
        return "just now";
    if (seconds < 2 * minute)
        return "1 minute ago";
    if (seconds < hour)
        return std::to_string(seconds / minute) + " minutes ago";
    return std::to_string(seconds / hour) + "h ago";
}

std::string peakHourText(std::optional<std::int64_t> hour) {
    if (!hour)
        return "--";
    const std::int64_t onDial = *hour % 12 == 0 ? 12 : *hour % 12;
    return std::to_string(onDial) + (*hour < 12 ? " AM" : " PM");
}

std::string modelFamilyName(std::string_view model) {
    constexpr std::array<std::pair<std::string_view, std::string_view>, 3> families{
        {{"sonnet", "Sonnet"}, {"opus", "Opus"}, {"haiku", "Haiku"}}};
    for (const auto &[part, family] : families) {
        if (model.find(part) != std::string_view::npos)
            return std::string(family);
    }
    return std::string(model.substr(model.rfind('/') + 1));
}

double cacheEfficiencyPct(const SessionTokens &tokens) {
    const std::int64_t total = tokens.total();
    if (total < 1)
        return 0;
    return static_cast<double>(tokens.cacheRead) / static_cast<double>(total) * 100;
}

} // namespace burnwick
