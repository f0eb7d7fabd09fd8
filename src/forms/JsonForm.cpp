// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/JsonForm.h"

#include "display/PriceText.h"
#include "display/StatusTitle.h"
#include "forecast/Forecast.h"
#include "forms/IsoText.h"
#include "forms/OrderedJson.h"

#include <algorithm>

namespace burnwick {

namespace {

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
        .add("cost", shownCost(usage))
        .add("burnRateTokensPerMin", usage.burnRateTokensPerMin)
        .add("projectedTodayCost", shownProjection(usage, &UsageFigures::projectedTodayCost))
        .add("projectedWeeklyCost", shownProjection(usage, &UsageFigures::projectedWeeklyCost))
        .add("projectedMonthlyCost", shownProjection(usage, &UsageFigures::projectedMonthlyCost));
    return object;
}

OrderedJson exactSessionJson(const UsageFigures &usage) {
    const SessionFigures &session = usage.exactSession;
    const PricedTokens price = priceOf(session);
    const auto projected = [&price](double cost) { return costOf({price.tokens, price.unpriced, cost}); };
    OrderedJson object = OrderedJson::object();
    object.add("hasJSONLData", usage.hasJSONLData);
    addTokens(object, session.tokens)
        .add("cost", costOf(price))
        .add("burnRateTokensPerMin", session.burnRateTokensPerMin)
        .add("projectedTodayCost", projected(session.projectedTodayCost))
        .add("projectedWeeklyCost", projected(session.projectedWeeklyCost))
        .add("projectedMonthlyCost", projected(session.projectedMonthlyCost))
        .add("unpricedTokens", session.unpricedTokens);
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

OrderedJson modelUsageJson(const std::vector<ModelUsage> &models) {
    OrderedJson array = OrderedJson::array();
    for (const ModelUsage &model : models) {
        array.add(OrderedJson::object()
                      .add("name", model.name)
                      .add("input", model.input)
                      .add("output", model.output)
                      .add("cacheWrite5m", model.cacheWrite5m)
                      .add("cacheWrite1h", model.cacheWrite1h)
                      .add("cacheRead", model.cacheRead)
                      .add("webSearches", model.webSearches)
                      .add("cost", costOf(model.total)));
    }
    return array;
}

OrderedJson projectsJson(const std::vector<ProjectUsage> &projects) {
    OrderedJson array = OrderedJson::array();
    for (const ProjectUsage &project : projects) {
        array.add(OrderedJson::object()
                      .add("path", project.path)
                      .add("sessions", project.sessions)
                      .add("tokens", project.total.tokens)
                      .add("cost", costOf(project.total))
                      .add("lastUsed", isoInstant(project.lastUsed)));
    }
    return array;
}

OrderedJson daysJson(const std::map<LocalDay, PricedTokens> &days) {
    OrderedJson object = OrderedJson::object();
    for (const auto &[day, total] : days)
        object.add(isoDate(day),
                   OrderedJson::object().add("tokens", total.tokens).add("cost", costOf(total)));
    return object;
}

OrderedJson exactJson(const UsageFigures &usage) {
    const UsageBreakdown &breakdown = *usage.breakdown;
    return OrderedJson::object()
        .add("session", exactSessionJson(usage))
        .add("history", historyJson(breakdown.history, usage.timeFilter))
        .add("cost", costOf(breakdown.total))
        .add("unpricedTokens", breakdown.total.unpriced)
        .add("messages", breakdown.history.messageCount)
        .add("models", modelUsageJson(breakdown.models))
        .add("projects", projectsJson(breakdown.projects))
        .add("days", daysJson(breakdown.days));
}

OrderedJson quotaJson(const QuotaData &quota) {
    return OrderedJson::object()
        .add("fiveHourUsagePct", quota.fiveHourUsagePct)
        .add("sevenDayUsagePct", quota.sevenDayUsagePct)
        .add("claudeDesignWeeklyPct", quota.claudeDesignWeeklyPct)
        .add("fiveHourResetAt", isoInstant(quota.fiveHourResetAt))
        .add("sevenDayResetAt", isoInstant(quota.sevenDayResetAt))
        .add("claudeDesignResetAt", isoInstant(quota.claudeDesignResetAt));
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
                      .add("resetsAt", isoInstant(limit.resetsAt))
                      .add("observedAt", isoInstant(limit.observedAt))
                      .add("forecastPct", range ? std::optional(range->middle) : std::nullopt)
                      .add("forecastLow", range ? std::optional(range->low) : std::nullopt)
                      .add("forecastHigh", range ? std::optional(range->high) : std::nullopt)
                      .add("fullAt", isoInstant(forecast.fullAt)));
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
    constexpr std::string_view exactName = "exact";
    constexpr std::string_view loggedName = "logged";
    const auto claudeStatus = account.claudeStatusReadAt ? std::optional(account.claudeStatus) : std::nullopt;
    return OrderedJson::object()
               .add("version", version)
               .add("title", plainText(buildStatusTitle(snapshot)))
               .add("statusIndicator", nameOf(account.statusIndicator()))
               .add("figures", usage.figureChoice == FigureChoice::exact ? exactName : loggedName)
               .add("session", sessionJson(usage))
               .add("history", historyJson(usage.historicalData, usage.timeFilter))
               .add("exact", exactJson(usage))
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
