// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/InternedString.h"
#include "model/Instant.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// The "timestamp" of a log line: keeps its text exactly, in 12 bytes, and answers its instant without
/// parsing again. Texts that are no date-time are interned instead.
class LogTimestamp {
public:
    LogTimestamp() noexcept {}
    explicit LogTimestamp(std::string_view text);

    /// The text as it was logged; absent when the line had none.
    [[nodiscard]] std::optional<std::string> text() const;
    /// Present when the text is a date-time with a fraction of a second, as every dated line of the logs has.
    [[nodiscard]] std::optional<Instant> instant() const noexcept {
        if (m_form.kind != Kind::dateTime || m_form.fractionDigits == 0)
            return std::nullopt;
        return Instant(std::chrono::nanoseconds(m_value.nanoseconds));
    }

private:
    enum class Kind : std::uint8_t { absent, dateTime, otherText };
    struct Form {
        Kind kind : 2 = Kind::absent;
        bool hasOffset : 1 = false;
        bool negativeZeroOffset : 1 = false;
        std::uint8_t fractionDigits : 4 = 0;
        std::int16_t offsetMinutes = 0;
    };
    union Value {
        Value() noexcept
            : nanoseconds(0) {}
        std::int64_t nanoseconds;
        InternedString text;
    };

    Value m_value;
    Form m_form;
};

} // namespace burnwick
