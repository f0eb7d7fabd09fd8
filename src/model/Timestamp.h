// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// Parses an internet date-time (ISO 8601) such as "2025-01-15T10:30:45.123Z": a valid date, "T", a time with
/// seconds, optionally a fraction of 1 to 9 digits, then "Z" or an offset such as "+02:00". Returns null for
/// any other text and for a year outside 1678 to 2261.
[[nodiscard]] std::optional<Instant> parseTimestamp(std::string_view text) noexcept;

/// Parses the timestamp of a log line: like parseTimestamp(), but null without a fraction.
[[nodiscard]] std::optional<Instant> parseLogInstant(std::string_view text) noexcept;

/// Returns the date-time in UTC with 0 to 9 digits of the fraction; the rest is cut off.
[[nodiscard]] std::string printTimestamp(Instant instant, std::size_t fractionDigits);

} // namespace burnwick
