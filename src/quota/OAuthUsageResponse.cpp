// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthUsageResponse.h"

#include "model/Timestamp.h"
#include "quota/LimitList.h"
#include "json/JsonReading.h"

#include <QJsonArray>

#include <algorithm>
#include <iterator>
#include <utility>

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
constexpr QLatin1String limitsKey("limits");
constexpr QLatin1String kindKey("kind");
constexpr QLatin1String percentKey("percent");
constexpr QLatin1String scopeKey("scope");
constexpr QLatin1String modelKey("model");
constexpr QLatin1String displayNameKey("display_name");

using Kind = Limit::Kind;
constexpr std::pair<Kind, QLatin1String> kindNames[] = {{Kind::session, QLatin1String("session")},
                                                        {Kind::weekly, QLatin1String("weekly_all")},
                                                        {Kind::weeklyScoped, QLatin1String("weekly_scoped")}};

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

/// Returns null for a malformed element and an unknown kind.
std::optional<OAuthUsageLimit> limitFrom(const QJsonObject &element) {
    const auto *kind = std::ranges::find(kindNames, element.value(kindKey).toString(),
                                         &std::pair<Kind, QLatin1String>::second);
    const QJsonValue percent = element.value(percentKey);
    const QJsonValue reset = element.value(resetsAtKey); // undefined if missing
    if (kind == std::end(kindNames) || !percent.isDouble() || !(reset.isNull() || reset.isString()))
        return std::nullopt;
    OAuthUsageLimit limit{kind->first, {std::max(0.0, percent.toDouble()), {}}};
    if (reset.isString()) {
        limit.period.resetsAt = reset.toString().toStdString();
        if (!resetOf(limit.period))
            return std::nullopt;
    }
    if (limit.kind == Kind::weeklyScoped) {
        limit.model = element.value(scopeKey)[modelKey][displayNameKey].toString().toStdString();
        if (limit.model.empty())
            return std::nullopt;
    }
    return limit;
}

QJsonObject toJson(const OAuthUsageLimit &limit) {
    const auto *kind = std::ranges::find(kindNames, limit.kind, &std::pair<Kind, QLatin1String>::first);
    QJsonObject json = toJson(limit.period);
    json.insert(percentKey, json.take(utilizationKey));
    json.insert(kindKey, kind->second);
    const QJsonObject model{{displayNameKey, QString::fromStdString(limit.model)}};
    json.insert(scopeKey, limit.model.empty() ? QJsonValue() : QJsonObject{{modelKey, model}});
    return json;
}

/// Returns the first limit of the list; null if there is none.
std::optional<OAuthUsagePeriod> listed(const OAuthUsageResponse &response, Kind kind,
                                       std::string_view model = {}) {
    const auto found = std::ranges::find_if(response.limits, [&](const OAuthUsageLimit &limit) {
        return limit.kind == kind && limit.model == model;
    });
    return found != response.limits.end() ? std::optional(found->period) : std::nullopt;
}

} // namespace

OAuthUsageResponse decodeUsageResponse(const QByteArray &body) {
    const QJsonObject root = parseJsonObject(body);
    OAuthUsageResponse response;
    const QJsonArray limits = root.value(limitsKey).toArray();
    for (const auto &element : limits) {
        if (auto limit = limitFrom(element.toObject()))
            response.limits.push_back(std::move(*limit));
    }
    response.fiveHour = listed(response, Kind::session) ? optionalPeriod(root, fiveHourKey)
                                                        : periodFrom(requiredObject(root, fiveHourKey));
    response.sevenDay = !response.limits.empty() ? optionalPeriod(root, sevenDayKey)
                                                 : periodFrom(requiredObject(root, sevenDayKey));
    response.sevenDayOpus = optionalPeriod(root, sevenDayOpusKey);
    response.sevenDayOmelette = optionalPeriod(root, sevenDayOmeletteKey);
    if (const auto extraUsage = optionalObject(root, extraUsageKey))
        response.extraUsage = extraUsageFrom(*extraUsage);
    return response;
}

QByteArray encodeUsageResponse(const OAuthUsageResponse &response) {
    QJsonObject root;
    const auto insert = [&root](QLatin1String key, const std::optional<OAuthUsagePeriod> &period) {
        if (period)
            root.insert(key, toJson(*period));
    };
    insert(fiveHourKey, response.fiveHour);
    insert(sevenDayKey, response.sevenDay);
    insert(sevenDayOpusKey, response.sevenDayOpus);
    insert(sevenDayOmeletteKey, response.sevenDayOmelette);
    if (response.extraUsage)
        root.insert(extraUsageKey, toJson(*response.extraUsage));
    QJsonArray limits;
    for (const OAuthUsageLimit &limit : response.limits)
        limits.append(toJson(limit));
    if (!limits.isEmpty())
        root.insert(limitsKey, limits);
    return QJsonDocument(root).toJson(QJsonDocument::Compact);
}

QuotaData quotaDataFrom(const OAuthUsageResponse &response) {
    const auto found = [&response](const std::optional<OAuthUsagePeriod> &period, Kind kind,
                                   std::string_view model = {}) {
        return period ? *period : listed(response, kind, model).value_or(OAuthUsagePeriod());
    };
    const OAuthUsagePeriod session = found(response.fiveHour, Kind::session);
    const OAuthUsagePeriod weekly = found(response.sevenDay, Kind::weekly);
    const OAuthUsagePeriod design = found(response.sevenDayOmelette, Kind::weeklyScoped, claudeDesign);
    return {session.utilization, weekly.utilization, design.utilization,
            resetOf(session),    resetOf(weekly),    resetOf(design)};
}

std::vector<Limit> limitsFrom(const OAuthUsageResponse &response, Instant observedAt) {
    std::vector<Limit> limits;
    const auto add = [&](Kind kind, const std::optional<OAuthUsagePeriod> &period, std::string_view model) {
        if (period)
            limits.push_back({kind, std::string(model), period->utilization, resetOf(*period), observedAt});
    };
    add(Kind::session, response.fiveHour, {});
    add(Kind::weekly, response.sevenDay, {});
    add(Kind::weeklyScoped, response.sevenDayOmelette, claudeDesign);
    for (const OAuthUsageLimit &limit : response.limits)
        add(limit.kind, limit.period, limit.model);
    return distinctLimits(std::move(limits));
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
