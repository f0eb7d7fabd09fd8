// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/JsonForm.h"

#include "display/StatusTitle.h"
#include "forms/OrderedJson.h"
#include "model/Timestamp.h"

#include <QtCore/QDate>

namespace burnwick {

namespace {

QString text(std::string_view utf8) {
    return QString::fromUtf8(utf8.data(), static_cast<qsizetype>(utf8.size()));
}

QJsonValue number(std::int64_t count) {
    return QJsonValue(static_cast<qint64>(count));
}

QString isoDate(LocalDay day) {
    constexpr qint64 julianDayOf1970 = 2'440'588;
    return QDate::fromJulianDay(julianDayOf1970 + day.time_since_epoch().count()).toString(Qt::ISODate);
}

OrderedJson &addTokens(OrderedJson &object, const SessionTokens &tokens) {
    return object.add(QStringLiteral("input"), number(tokens.input))
        .add(QStringLiteral("output"), number(tokens.output))
        .add(QStringLiteral("cacheCreation"), number(tokens.cacheCreation))
        .add(QStringLiteral("cacheRead"), number(tokens.cacheRead))
        .add(QStringLiteral("total"), number(tokens.total()));
}

OrderedJson sessionJson(const UsageFigures &usage) {
    OrderedJson object = OrderedJson::object();
    object.add(QStringLiteral("hasJSONLData"), usage.hasJSONLData);
    addTokens(object, usage.sessionTokens)
        .add(QStringLiteral("cost"), usage.sessionCost)
        .add(QStringLiteral("burnRateTokensPerMin"), usage.burnRateTokensPerMin)
        .add(QStringLiteral("projectedTodayCost"), usage.projectedTodayCost)
        .add(QStringLiteral("projectedWeeklyCost"), usage.projectedWeeklyCost)
        .add(QStringLiteral("projectedMonthlyCost"), usage.projectedMonthlyCost);
    return object;
}

OrderedJson dailyJson(const HistoricalData &history) {
    OrderedJson object = OrderedJson::object();
    for (const auto &[day, tokens] : history.dailyActivity)
        object.add(isoDate(day), number(tokens));
    return object;
}

OrderedJson modelsJson(const HistoricalData &history) {
    OrderedJson array = OrderedJson::array();
    for (const ModelStat &model : history.modelStats) {
        array.add(OrderedJson::object()
                      .add(QStringLiteral("name"), text(model.name))
                      .add(QStringLiteral("inputTokens"), number(model.inputTokens))
                      .add(QStringLiteral("outputTokens"), number(model.outputTokens))
                      .add(QStringLiteral("percentage"), model.percentage));
    }
    return array;
}

OrderedJson historyJson(const HistoricalData &history, TimeFilter timeFilter) {
    OrderedJson tokens = OrderedJson::object();
    addTokens(tokens, history.totalTokens);
    const QJsonValue peakHour = history.peakHour ? number(*history.peakHour) : QJsonValue();
    const QJsonValue favoriteModel =
        history.favoriteModel ? QJsonValue(text(*history.favoriteModel)) : QJsonValue();
    return OrderedJson::object()
        .add(QStringLiteral("timeFilter"), text(nameOf(timeFilter)))
        .add(QStringLiteral("sessionCount"), number(history.sessionCount))
        .add(QStringLiteral("messageCount"), number(history.messageCount))
        .add(QStringLiteral("totalTokens"), tokens)
        .add(QStringLiteral("activeDays"), number(history.activeDays))
        .add(QStringLiteral("currentStreak"), number(history.currentStreak))
        .add(QStringLiteral("longestStreak"), number(history.longestStreak))
        .add(QStringLiteral("peakHour"), peakHour)
        .add(QStringLiteral("favoriteModel"), favoriteModel)
        .add(QStringLiteral("dailyActivity"), dailyJson(history))
        .add(QStringLiteral("modelStats"), modelsJson(history));
}

QJsonValue instantJson(const std::optional<Instant> &instant) {
    constexpr std::size_t milliseconds = 3;
    return instant ? QJsonValue(text(printTimestamp(*instant, milliseconds))) : QJsonValue();
}

OrderedJson quotaJson(const QuotaData &quota) {
    return OrderedJson::object()
        .add(QStringLiteral("fiveHourUsagePct"), quota.fiveHourUsagePct)
        .add(QStringLiteral("sevenDayUsagePct"), quota.sevenDayUsagePct)
        .add(QStringLiteral("claudeDesignWeeklyPct"), quota.claudeDesignWeeklyPct)
        .add(QStringLiteral("fiveHourResetAt"), instantJson(quota.fiveHourResetAt))
        .add(QStringLiteral("sevenDayResetAt"), instantJson(quota.sevenDayResetAt))
        .add(QStringLiteral("claudeDesignResetAt"), instantJson(quota.claudeDesignResetAt));
}

OrderedJson extraUsageJson(const ExtraUsageData &usage) {
    return OrderedJson::object()
        .add(QStringLiteral("dailySpend"), usage.dailySpend)
        .add(QStringLiteral("monthlyLimit"), usage.monthlyLimit)
        .add(QStringLiteral("currentBalance"), usage.currentBalance)
        .add(QStringLiteral("dailySpendPct"), usage.dailySpendPct)
        .add(QStringLiteral("daysUntilReset"), number(usage.daysUntilReset));
}

OrderedJson claudeStatusJson(const std::vector<ClaudeComponentStatus> &components) {
    OrderedJson array = OrderedJson::array();
    for (const ClaudeComponentStatus &component : components) {
        array.add(OrderedJson::object()
                      .add(QStringLiteral("name"), text(component.name))
                      .add(QStringLiteral("status"), text(nameOf(component.status))));
    }
    return array;
}

/// Null for what is absent.
template <typename Value>
void addOptional(OrderedJson &root, const QString &key, const std::optional<Value> &value,
                 OrderedJson (*json)(const Value &)) {
    if (value)
        root.add(key, json(*value));
    else
        root.add(key, QJsonValue());
}

} // namespace

std::string jsonForm(const Snapshot &snapshot, std::string_view version) {
    const auto &[usage, account] = snapshot;
    OrderedJson root = OrderedJson::object();
    root.add(QStringLiteral("version"), text(version))
        .add(QStringLiteral("title"), text(plainText(buildStatusTitle(snapshot))))
        .add(QStringLiteral("statusIndicator"), text(nameOf(account.statusIndicator())))
        .add(QStringLiteral("session"), sessionJson(usage))
        .add(QStringLiteral("history"), historyJson(usage.historicalData, usage.timeFilter));
    addOptional(root, QStringLiteral("quota"), account.quotaData, quotaJson);
    addOptional(root, QStringLiteral("extraUsage"), account.extraUsage, extraUsageJson);
    root.add(QStringLiteral("oauthStatus"), text(nameOf(account.oauthStatus)));
    const auto claudeStatus = account.claudeStatusReadAt ? std::optional(account.claudeStatus) : std::nullopt;
    addOptional(root, QStringLiteral("claudeStatus"), claudeStatus, claudeStatusJson);
    return root.toJson().toStdString() + '\n';
}

} // namespace burnwick
