// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/DailyActivity.h"

#include "display/DisplayFormat.h"
#include "ui/text/Text.h"

#include <QDate>
#include <QLocale>

namespace burnwick {

namespace {

const QString noTokens = QStringLiteral("no tokens");

} // namespace

QString dayText(LocalDay day) {
    const std::chrono::year_month_day date(day);
    const QDate civil(static_cast<int>(date.year()), static_cast<int>(static_cast<unsigned>(date.month())),
                      static_cast<int>(static_cast<unsigned>(date.day())));
    // Independent of the desktop's language.
    return QLocale(QLocale::English, QLocale::UnitedStates).toString(civil, QStringLiteral("MMM d"));
}

QString exactTokensText(std::int64_t count) {
    return count <= 0 ? noTokens : textOf(countText(count, "token"));
}

QString roundedTokensText(std::int64_t count) {
    return count <= 1 ? exactTokensText(count) : textOf(tokenCountText(count)) + QLatin1String(" tokens");
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
        return noTokens;
    return QStringLiteral("%1, most on %2 with %3")
        .arg(textOf(countText(activeDays, "active day")), dayText(most->first),
             roundedTokensText(most->second));
}

} // namespace burnwick
