// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthUsageResponse.h"

#include "model/Timestamp.h"
#include "json/JsonReading.h"

#include <algorithm>

namespace burnwick {

namespace {

constexpr QLatin1String fiveHourKey("five_hour");
constexpr QLatin1String sevenDayKey("seven_day");
constexpr QLatin1String sevenDayOpusKey("seven_day_opus");
constexpr QLatin1String sevenDayOmeletteKey("seven_day_omelette");
constexpr QLatin1String extraUsageKey("extra_usage");
constexpr QLatin1String utilizationKey("utilization");
constexpr QLatin1String resetsAtKey("resets_at");
constexpr QLatin1String isEnabledKey("is_enabled");
constexpr QLatin1String monthlyLimitKey("monthly_limit");
constexpr QLatin1String usedCreditsKey("used_credits");

OAuthUsagePeriod periodFrom(const QJsonObject &object) {
    const auto resetsAt = optionalString(object, resetsAtKey);
    return {requiredNumber(object, utilizationKey),
            resetsAt ? std::optional(resetsAt->toStdString()) : std::nullopt};
}

std::optional<OAuthUsagePeriod> optionalPeriod(const QJsonObject &object, QLatin1String key) {
    const auto period = optionalObject(object, key);
    return period ? std::optional(periodFrom(*period)) : std::nullopt;
}

QJsonObject toJson(const OAuthUsagePeriod &period) {
    return {{utilizationKey, period.utilization},
            {resetsAtKey, period.resetsAt ? QString::fromStdString(*period.resetsAt) : QJsonValue()}};
}

std::optional<OAuthExtraUsage> extraUsageFrom(const QJsonObject &object) {
    const bool enabled = requiredBool(object, isEnabledKey);
    QJsonObject numbers = object;
    bool anyNull = false;
    for (const auto key : {monthlyLimitKey, usedCreditsKey, utilizationKey}) {
        // The service sends null numbers when extra usage is disabled.
        if (!enabled && object.value(key).isNull()) {
            anyNull = true;
            numbers.insert(key, 0);
        }
    }
    const OAuthExtraUsage usage{enabled, requiredNumber(numbers, monthlyLimitKey),
                                requiredNumber(numbers, usedCreditsKey),
                                requiredNumber(numbers, utilizationKey)};
    return anyNull ? std::nullopt : std::optional(usage);
}

QJsonObject toJson(const OAuthExtraUsage &usage) {
    return {{isEnabledKey, usage.isEnabled},
            {monthlyLimitKey, usage.monthlyLimit},
            {usedCreditsKey, usage.usedCredits},
            {utilizationKey, usage.utilization}};
}

std::optional<Instant> resetOf(const OAuthUsagePeriod &period) {
    return period.resetsAt ? parseTimestamp(*period.resetsAt) : std::nullopt;
}

} // namespace

OAuthUsageResponse decodeUsageResponse(const QByteArray &body) {
    const QJsonObject root = parseJsonObject(body);
    OAuthUsageResponse response;
    response.fiveHour = periodFrom(requiredObject(root, fiveHourKey));
    response.sevenDay = periodFrom(requiredObject(root, sevenDayKey));
    response.sevenDayOpus = optionalPeriod(root, sevenDayOpusKey);
    response.sevenDayOmelette = optionalPeriod(root, sevenDayOmeletteKey);
    if (const auto extraUsage = optionalObject(root, extraUsageKey))
        response.extraUsage = extraUsageFrom(*extraUsage);
    return response;
}

QByteArray encodeUsageResponse(const OAuthUsageResponse &response) {
    QJsonObject root{{fiveHourKey, toJson(response.fiveHour)}, {sevenDayKey, toJson(response.sevenDay)}};
    if (response.sevenDayOpus)
        root.insert(sevenDayOpusKey, toJson(*response.sevenDayOpus));
    if (response.sevenDayOmelette)
        root.insert(sevenDayOmeletteKey, toJson(*response.sevenDayOmelette));
    if (response.extraUsage)
        root.insert(extraUsageKey, toJson(*response.extraUsage));
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

QuotaData quotaDataFrom(const OAuthUsageResponse &response) {
    const OAuthUsagePeriod design = response.sevenDayOmelette.value_or(OAuthUsagePeriod());
    return {response.fiveHour.utilization, response.sevenDay.utilization, design.utilization,
            resetOf(response.fiveHour),    resetOf(response.sevenDay),    resetOf(design)};
}

std::optional<ExtraUsageData> extraUsageDataFrom(const OAuthUsageResponse &response, const Calendar &calendar,
                                                 Instant now) {
    constexpr double centsPerDollar = 100;
    if (!response.extraUsage || !response.extraUsage->isEnabled || !(response.extraUsage->monthlyLimit > 0))
        return std::nullopt;
    const double limit = response.extraUsage->monthlyLimit / centsPerDollar;
    const double spent = response.extraUsage->usedCredits / centsPerDollar;
    return ExtraUsageData{spent, limit, std::max(0.0, limit - spent), response.extraUsage->utilization,
                          calendar.daysLeftInMonth(now)};
}

} // namespace burnwick
