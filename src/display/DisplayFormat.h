// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"
#include "model/SessionTokens.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

/// How figures read on screen. Pure functions, the same in every locale: a point before the decimals.
namespace burnwick {

/// The number with that many decimals, rounded like printf("%.*f").
[[nodiscard]] std::string fixedText(double value, int decimals);

/// "999", "1.0K", "999.9K" (and "1000.0K" just below a million), "1.2M".
[[nodiscard]] std::string tokenCountText(std::int64_t count);

/// "$12.35"; four decimals for amounts between 0 and one cent: "$0.0042".
[[nodiscard]] std::string costText(double dollars);

/// "225 tokens/min", "1.5K tokens/min".
[[nodiscard]] std::string burnRateText(double tokensPerMin);

/// "67%"; above 100 as it stands.
[[nodiscard]] std::string percentText(double pct);

/// "Now", "42m", "3h 5m" and, from 48 hours on, "2d 1h".
[[nodiscard]] std::string timeRemainingText(Instant until, Instant now);

/// "just now", "7 minutes ago", "2h ago"; an instant to come counts as now.
[[nodiscard]] std::string relativeAgeText(Instant since, Instant now);

/// "12 AM" for 0, "1 PM" for 13; "--" without an hour.
[[nodiscard]] std::string peakHourText(std::optional<std::int64_t> hour);

/// "Sonnet", "Opus" or "Haiku" by what the name contains, in that order; otherwise what follows its last "/".
[[nodiscard]] std::string modelFamilyName(std::string_view model);

/// Share of the tokens read from the prompt cache, 0 to 100; 0 without tokens.
[[nodiscard]] double cacheEfficiencyPct(const SessionTokens &tokens);

} // namespace burnwick
