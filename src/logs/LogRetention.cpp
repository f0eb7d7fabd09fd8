// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogRetention.h"

#include "json/JsonFile.h"
#include "json/JsonReading.h"

#include <algorithm>
#include <limits>

namespace burnwick {

namespace {

constexpr int usualDays = 30;

} // namespace

int daysUntilCleanup(const std::filesystem::path &home) {
    try {
        const QJsonObject settings = parseJsonObject(jsonFileBytes(home / ".claude" / "settings.json"));
        const qint64 days = settings.value(QLatin1String("cleanupPeriodDays")).toInteger();
        constexpr qint64 most = std::numeric_limits<int>::max();
        return days > 0 ? static_cast<int>(std::min(days, most)) : usualDays;
    } catch (const DecodeError &) {
        return usualDays;
    }
}

} // namespace burnwick
