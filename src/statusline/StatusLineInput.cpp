// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "statusline/StatusLineInput.h"

#include "model/Timestamp.h"
#include "json/JsonReading.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <cmath>
#include <string>

namespace burnwick {

namespace {

using Kind = Limit::Kind;

/// More than an account has. An input with more of them is malformed.
constexpr std::size_t mostLimits = 32;

std::optional<Instant> instantOf(const QJsonValue &value) {
    if (value.isString())
        return parseTimestamp(value.toString().toStdString());
    constexpr double representable = 9e9; // seconds
    const double seconds = value.toDouble(representable);
    if (!(std::abs(seconds) < representable))
        return std::nullopt;
    return Instant(std::chrono::milliseconds(std::llround(seconds * 1000)));
}

void add(std::vector<Limit> &limits, Kind kind, const QJsonObject &window, QLatin1String percentKey,
         Instant observedAt) {
    const auto used = usedPercentage(window.value(percentKey));
    const auto resetsAt = resetInstant(window.value(QLatin1String("resets_at")), kind, observedAt);
    Limit limit{kind, {}, used.value_or(0), resetsAt, observedAt, Limit::Source::statusLine};
    if (kind == Kind::weeklyScoped)
        limit.model = window.value(QLatin1String("display_name")).toString().toStdString();
    const bool isNamed = kind != Kind::weeklyScoped || !limit.model.empty();
    const bool isKnown =
        std::ranges::any_of(limits, [&limit](const Limit &known) { return isSameLimit(known, limit); });
    const bool isOver = resetsAt && *resetsAt <= observedAt;
    if (used && isNamed && !isKnown && !isOver && limits.size() < mostLimits)
        limits.push_back(std::move(limit));
}

} // namespace

std::optional<double> usedPercentage(const QJsonValue &value) {
    constexpr double most = 1000;
    const double percent = value.toDouble(-1);
    return percent >= 0 && percent <= most ? std::optional(percent) : std::nullopt;
}

std::optional<Instant> resetInstant(const QJsonValue &value, Limit::Kind kind, Instant observedAt) {
    const auto instant = instantOf(value);
    return instant && isPlausibleReset(*instant, kind, observedAt) ? instant : std::nullopt;
}

std::vector<Limit> decodeStatusLine(const QByteArray &json, Instant observedAt) {
    const QJsonObject all = parseJsonObject(json).value(QLatin1String("rate_limits")).toObject();
    constexpr QLatin1String usedKey("used_percentage");
    std::vector<Limit> limits;
    add(limits, Kind::session, all.value(QLatin1String("five_hour")).toObject(), usedKey, observedAt);
    add(limits, Kind::weekly, all.value(QLatin1String("seven_day")).toObject(), usedKey, observedAt);
    const QJsonArray scoped = all.value(QLatin1String("model_scoped")).toArray();
    for (const QJsonValue &window : scoped)
        add(limits, Kind::weeklyScoped, window.toObject(), QLatin1String("utilization"), observedAt);
    return limits;
}

} // namespace burnwick
