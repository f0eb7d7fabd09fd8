// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/DailyActivity.h"

#include "display/DisplayFormat.h"
#include "ui/text/Text.h"

#include <QDate>
#include <QLocale>

namespace burnwick {

namespace {

// Independent of the desktop's language.
QLocale english() {
    return {QLocale::English, QLocale::UnitedStates};
}

QString tokensText(std::int64_t count, const QString &countText) {
    if (count <= 0)
        return QStringLiteral("no tokens");
    return count == 1 ? QStringLiteral("1 token") : countText + QLatin1String(" tokens");
}

} // namespace

QString dayText(LocalDay day) {
    const std::chrono::year_month_day date(day);
    const QDate civil(static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
                      static_cast<int>(static_cast<unsigned>(date.day())));
    return english().toString(civil, QStringLiteral("MMM d"));
}

QString exactTokensText(std::int64_t count) {
    return tokensText(count, english().toString(static_cast<qlonglong>(count)));
}

QString roundedTokensText(std::int64_t count) {
    return tokensText(count, textOf(tokenCountText(count)));
}

QString activitySummary(const DailyActivity &activity, LocalDay first, LocalDay last) {
    int activeDays = 0;
    auto most = activity.end();
    for (auto day = activity.lower_bound(first); day != activity.end() && day->first <= last; ++day) {
        ++activeDays;
        if (most == activity.end() || day->second > most->second)
            most = day;
    }
    if (most == activity.end() || most->second <= 0)
        return QStringLiteral("no tokens");
    return QStringLiteral("%1 active %2, most on %3 with %4")
        .arg(activeDays)
        .arg(activeDays == 1 ? QLatin1String("day") : QLatin1String("days"), dayText(most->first),
             roundedTokensText(most->second));
}

} // namespace burnwick
