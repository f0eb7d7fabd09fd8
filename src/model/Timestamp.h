// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// An internet date-time (ISO 8601) taken apart without loss: printing it again gives the text it came from.
struct Timestamp {
    Instant instant;
    std::uint8_t fractionDigits = 0;           ///< 0 to 9 digits behind the seconds
    std::optional<std::int16_t> offsetMinutes; ///< east of UTC; absent for "Z"
    bool negativeZeroOffset = false;           ///< "-00:00" rather than "+00:00"

    bool operator==(const Timestamp &) const = default;
};

/// Reads "2025-01-15T10:30:45.123Z": a valid date, "T", a time with seconds, optionally a fraction of 1 to 9
/// digits, then "Z" or an offset such as "+02:00". Nothing else parses, nor does a year outside 1678 to 2261.
[[nodiscard]] std::optional<Timestamp> parseTimestamp(std::string_view text) noexcept;

/// The instant of a log line's timestamp: like parseTimestamp(), but the fraction is required.
[[nodiscard]] std::optional<Instant> parseLogInstant(std::string_view text) noexcept;

/// The text that parseTimestamp() reads back to an equal value.
[[nodiscard]] std::string printTimestamp(const Timestamp &timestamp);

} // namespace burnwick
