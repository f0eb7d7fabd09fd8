// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/IsoText.h"

#include "model/Timestamp.h"

#include <QtCore/QDate>

namespace burnwick {

std::string isoDate(LocalDay day) {
    constexpr qint64 julianDayOf1970 = 2'440'588;
    const QDate date = QDate::fromJulianDay(julianDayOf1970 + day.time_since_epoch().count());
    return date.toString(Qt::ISODate).toStdString();
}

std::optional<std::string> isoInstant(const std::optional<Instant> &instant) {
    constexpr std::size_t milliseconds = 3;
    if (!instant)
        return std::nullopt;
    return printTimestamp(*instant, milliseconds);
}

} // namespace burnwick
