// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/JsonForm.h"

#include "display/StatusTitle.h"
#include "forecast/Forecast.h"
#include "forms/OrderedJson.h"
#include "model/Timestamp.h"

#include <QtCore/QDate>

#include <algorithm>

namespace burnwick {

namespace {

std::string isoDate(LocalDay day) {
    constexpr qint64 julianDayOf1970 = 2'440'588;
    const QDate date = QDate::fromJulianDay(julianDayOf1970 + day.time_since_epoch().count());
    return date.toString(Qt::ISODate).toStdString();
}

OrderedJson &addTokens(OrderedJson &object, const SessionTokens &tokens) {
    return object.add("input", tokens.input)
        .add("output", tokens.output)
        .add("cacheCreation", tokens.cacheCreation)
        .add("cacheRead", tokens.cacheRead)
        .add("total", tokens.total());
}

OrderedJson sessionJson(const UsageFigures &usage) {
    OrderedJson object = OrderedJson::object();
    object.add("hasJSONLData", usage.hasJSONLData);
    addTokens(object, usage.sessionTokens)
        .add("cost", usage.sessionCost)
        .add("burnRateTokensPerMin", usage.burnRateTokensPerMin)
        .add("projectedTodayCost", usage.projectedTodayCost)
        .add("projectedWeeklyCost", usage.projectedWeeklyCost)
        .add("projectedMonthlyCost", usage.projectedMonthlyCost);
    return object;
}

OrderedJson dailyJson(const HistoricalData &history) {
    OrderedJson object = OrderedJson::object();
    for (const auto &[day, tokens] : history.dailyActivity)
        object.add(isoDate(day), tokens);
    return object;
}

OrderedJson modelsJson(const HistoricalData &history) {
    OrderedJson array = OrderedJson::array();
    for (const ModelStat &model : history.modelStats) {
        array.add(OrderedJson::object()
                      .add("name", model.name)
                      .add("inputTokens", model.inputTokens)
                      .add("outputTokens", model.outputTokens)
                      .add("percentage", model.percentage));
    }
    return array;
}

OrderedJson historyJson(const HistoricalData &history, TimeFilter timeFilter) {
    OrderedJson tokens = OrderedJson::object();
    addTokens(tokens, history.totalTokens);
    return OrderedJson::object()
        .add("timeFilter", nameOf(timeFilter))
        .add("sessionCount", history.sessionCount)
        .add("messageCount", history.messageCount)
        .add("totalTokens", tokens)
        .add("activeDays", history.activeDays)
        .add("currentStreak", history.currentStreak)
        .add("longestStreak", history.longestStreak)
        .add("peakHour", history.peakHour)
        .add("favoriteModel", history.favoriteModel)
        .add("dailyActivity", dailyJson(history))
        .add("modelStats", modelsJson(history));
}

std::optional<std::string> instantText(const std::optional<Instant> &instant) {
    constexpr std::size_t milliseconds = 3;
    if (!instant)
        return std::nullopt;
    return printTimestamp(*instant, milliseconds);
}

OrderedJson quotaJson(const QuotaData &quota) {
    return OrderedJson::object()
        .add("fiveHourUsagePct", quota.fiveHourUsagePct)
        .add("sevenDayUsagePct", quota.sevenDayUsagePct)
        .add("claudeDesignWeeklyPct", quota.claudeDesignWeeklyPct)
        .add("fiveHourResetAt", instantText(quota.fiveHourResetAt))
        .add("sevenDayResetAt", instantText(quota.sevenDayResetAt))
        .add("claudeDesignResetAt", instantText(quota.claudeDesignResetAt));
}

OrderedJson limitsJson(const Snapshot &snapshot, Instant now) {
    const auto &courses = snapshot.usage.limitCourses;
    OrderedJson array = OrderedJson::array();
    for (const Limit &limit : snapshot.account.limits) {
        const auto course = std::ranges::find_if(
            courses, [&limit](const LimitCourse &each) { return isSameLimit(each.limit, limit); });
        const Forecast forecast = course != courses.end() ? forecastOf(*course, now) : Forecast();
        const auto &range = forecast.atReset;
        array.add(OrderedJson::object()
                      .add("kind", nameOf(limit.kind))
                      .add("model", limit.model.empty() ? std::nullopt : std::optional(limit.model))
                      .add("usedPct", limit.usedPct)
                      .add("resetsAt", instantText(limit.resetsAt))
                      .add("observedAt", instantText(limit.observedAt))
                      .add("forecastPct", range ? std::optional(range->middle) : std::nullopt)
                      .add("forecastLow", range ? std::optional(range->low) : std::nullopt)
                      .add("forecastHigh", range ? std::optional(range->high) : std::nullopt)
                      .add("fullAt", instantText(forecast.fullAt)));
    }
    return array;
}

OrderedJson extraUsageJson(const ExtraUsageData &usage) {
    return OrderedJson::object()
        .add("dailySpend", usage.dailySpend)
        .add("monthlyLimit", usage.monthlyLimit)
        .add("currentBalance", usage.currentBalance)
        .add("dailySpendPct", usage.dailySpendPct)
        .add("daysUntilReset", usage.daysUntilReset);
}

OrderedJson claudeStatusJson(const std::vector<ClaudeComponentStatus> &components) {
    OrderedJson array = OrderedJson::array();
    for (const ClaudeComponentStatus &component : components) {
        array.add(OrderedJson::object().add("name", component.name).add("status", nameOf(component.status)));
    }
    return array;
}

/// Calls `json` with the value if there is one.
template <typename Value>
std::optional<OrderedJson> optionally(OrderedJson (*json)(const Value &), const std::optional<Value> &value) {
    return value ? std::optional(json(*value)) : std::nullopt;
}

} // namespace

std::string jsonForm(const Snapshot &snapshot, std::string_view version, Instant now) {
    const auto &[usage, account] = snapshot;
    const auto claudeStatus = account.claudeStatusReadAt ? std::optional(account.claudeStatus) : std::nullopt;
    return OrderedJson::object()
               .add("version", version)
               .add("title", plainText(buildStatusTitle(snapshot)))
               .add("statusIndicator", nameOf(account.statusIndicator()))
               .add("session", sessionJson(usage))
               .add("history", historyJson(usage.historicalData, usage.timeFilter))
               .add("quota", optionally(quotaJson, account.quotaData))
               .add("limits", limitsJson(snapshot, now))
               .add("extraUsage", optionally(extraUsageJson, account.extraUsage))
               .add("oauthStatus", nameOf(account.oauthStatus))
               .add("claudeStatus", optionally(claudeStatusJson, claudeStatus))
               .toJson()
               .toStdString() +
           '\n';
}

} // namespace burnwick
