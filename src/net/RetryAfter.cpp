// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/RetryAfter.h"

#include <QDateTime>
#include <QLocale>
#include <QTimeZone>

#include <algorithm>
#include <limits>

namespace burnwick {

std::optional<std::chrono::seconds> parseRetryAfter(const QByteArray &header, Instant now) {
    using std::chrono::seconds;
    const QByteArray text = header.trimmed();
    if (!text.isEmpty() && std::ranges::all_of(text, [](char c) { return c >= '0' && c <= '9'; })) {
        bool fits = false;
        const auto count = text.toUInt(&fits);
        return seconds(fits ? count : std::numeric_limits<unsigned>::max());
    }
    // The locale's names of days and months are English.
    QDateTime date =
        QLocale::c().toDateTime(QString::fromLatin1(text), QStringLiteral("ddd, dd MMM yyyy HH:mm:ss 'GMT'"));
    if (!date.isValid())
        return std::nullopt;
    date.setTimeZone(QTimeZone::utc());
    const seconds wait =
        seconds(date.toSecsSinceEpoch()) - std::chrono::floor<seconds>(now).time_since_epoch();
    return std::max(wait, seconds(0));
}

} // namespace burnwick
