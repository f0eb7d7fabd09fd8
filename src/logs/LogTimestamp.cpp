// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogTimestamp.h"

#include "model/Timestamp.h"

namespace burnwick {

LogTimestamp::LogTimestamp(std::string_view text) {
    const auto timestamp = parseTimestamp(text);
    if (!timestamp) {
        m_form.kind = Kind::otherText;
        m_value.text = InternedString(text);
        return;
    }
    m_form.kind = Kind::dateTime;
    m_form.hasOffset = timestamp->offsetMinutes.has_value();
    m_form.negativeZeroOffset = timestamp->negativeZeroOffset;
    m_form.fractionDigits = timestamp->fractionDigits & 0xF;
    m_form.offsetMinutes = timestamp->offsetMinutes.value_or(0);
    m_value.nanoseconds = timestamp->instant.time_since_epoch().count();
}

std::optional<std::string> LogTimestamp::text() const {
    switch (m_form.kind) {
    case Kind::otherText:
        return std::string(m_value.text.view());
    case Kind::dateTime: {
        Timestamp timestamp;
        timestamp.instant = Instant(std::chrono::nanoseconds(m_value.nanoseconds));
        timestamp.fractionDigits = m_form.fractionDigits;
        if (m_form.hasOffset)
            timestamp.offsetMinutes = m_form.offsetMinutes;
        timestamp.negativeZeroOffset = m_form.negativeZeroOffset;
        return printTimestamp(timestamp);
    }
    case Kind::absent:
        break;
    }
    return std::nullopt;
}

} // namespace burnwick
