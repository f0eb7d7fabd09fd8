// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"
#include "model/SessionTokens.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// Texts for figures. Pure functions, independent of the locale: the decimal separator is a point.
namespace burnwick {

/// The number with that many decimals, rounded like printf("%.*f").
[[nodiscard]] std::string fixedText(double value, int decimals);

/// "999", "1.0K", "999.9K" (and "1000.0K" just below a million), "1.2M".
[[nodiscard]] std::string tokenCountText(std::int64_t count);

/// "1 day", "1,234 days": a count from 0 on with its noun, whose plural ends in "s".
[[nodiscard]] std::string countText(std::int64_t count, std::string_view noun);

/// "$12.35"; four decimals for amounts between 0 and one cent: "$0.0042".
[[nodiscard]] std::string costText(double dollars);

/// "225 tokens/min", "1.5K tokens/min".
[[nodiscard]] std::string burnRateText(double tokensPerMin);

/// "67%"; not limited to 100.
[[nodiscard]] std::string percentText(double pct);

/// "Now", "42m", "3h 5m" and, from 48 hours on, "2d 1h".
[[nodiscard]] std::string timeRemainingText(Instant until, Instant now);

/// "resets now", "resets in 3h 5m", or an empty text without an instant.
[[nodiscard]] std::string resetText(const std::optional<Instant> &resetAt, Instant now);

/// "1.2K in · 300 out".
[[nodiscard]] std::string inOutText(std::int64_t inputTokens, std::int64_t outputTokens);

/// "just now", "7 minutes ago", "2h ago"; "just now" for a future instant.
[[nodiscard]] std::string relativeAgeText(Instant since, Instant now);

/// "12 AM" for 0, "1 PM" for 13; "--" without an hour.
[[nodiscard]] std::string peakHourText(std::optional<std::int64_t> hour);

/// "Sonnet", "Opus" or "Haiku" when the name contains it in lower case, in that order; otherwise the text
/// after the last "/".
[[nodiscard]] std::string modelFamilyName(std::string_view model);

/// The share of the tokens that come from the prompt cache, 0 to 100; 0 without tokens.
[[nodiscard]] double cacheEfficiencyPct(const SessionTokens &tokens);

} // namespace burnwick
