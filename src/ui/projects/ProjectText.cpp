// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectText.h"

#include "display/DisplayFormat.h"
#include "display/DisplayText.h"
#include "ui/charts/DailyActivity.h"
#include "ui/text/Text.h"

#include <algorithm>
#include <cmath>

namespace burnwick {

namespace {

std::string_view withoutSlashAtEnd(std::string_view path) {
    while (path.size() > 1 && path.back() == '/')
        path.remove_suffix(1);
    return path;
}

} // namespace

QString projectName(std::string_view path) {
    const std::string_view whole = withoutSlashAtEnd(path);
    const std::string_view name = whole == "/" ? whole : whole.substr(whole.rfind('/') + 1);
    return name.empty() ? QStringLiteral("Unknown project") : textOf(displayText(name));
}

QString projectPath(std::string_view path, std::string_view home) {
    const std::string_view whole = withoutSlashAtEnd(path);
    const std::string_view homeFolder = withoutSlashAtEnd(home);
    const bool isInHome = homeFolder.size() > 1 && whole.starts_with(homeFolder) &&
                          (whole.size() == homeFolder.size() || whole[homeFolder.size()] == '/');
    return isInHome ? u'~' + textOf(displayText(whole.substr(homeFolder.size())))
                    : textOf(displayText(whole));
}

QString shareText(double percent) {
    if (percent > 0 && percent < 0.5)
        return QStringLiteral("<1%");
    return textOf(percentText(std::round(percent)));
}

QString lastUsedText(const std::optional<Instant> &lastUsed, Instant now, const Calendar &calendar) {
    if (!lastUsed)
        return QStringLiteral("–");
    const LocalDay day = calendar.dayOf(*lastUsed);
    const LocalDay today = calendar.dayOf(now);
    if (day >= today || now - *lastUsed < std::chrono::hours(1))
        return textOf(relativeAgeText(*lastUsed, now));
    if (day == today - std::chrono::days(1))
        return QStringLiteral("Yesterday");
    const auto year = std::chrono::year_month_day(day).year();
    if (year == std::chrono::year_month_day(today).year())
        return dayText(day);
    return dayText(day) + QStringLiteral(", %1").arg(static_cast<int>(year));
}

} // namespace burnwick
