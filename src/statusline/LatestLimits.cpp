// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "statusline/LatestLimits.h"

#include "model/Timestamp.h"
#include "statusline/StatusLineInput.h"
#include "json/JsonFile.h"
#include "json/JsonReading.h"

#include <QJsonArray>

#include <algorithm>
#include <optional>
#include <string>

namespace burnwick {

namespace {

constexpr QLatin1String limitsKey("limits");
constexpr QLatin1String kindKey("kind");
constexpr QLatin1String modelKey("model");
constexpr QLatin1String usedKey("usedPct");
constexpr QLatin1String resetsKey("resetsAt");
constexpr QLatin1String observedKey("observedAt");

/// Smaller differences of instants are no change: the service computes the reset anew for each answer.
constexpr std::chrono::minutes tolerance{1};

QJsonValue jsonOf(Instant instant) {
    constexpr std::size_t milliseconds = 3;
    return QString::fromStdString(printTimestamp(instant, milliseconds));
}

QJsonObject jsonOf(const Limit &limit) {
    const std::string_view kind = nameOf(limit.kind);
    return {{kindKey, QLatin1String(kind.data(), static_cast<qsizetype>(kind.size()))},
            {modelKey, limit.model.empty() ? QJsonValue() : QString::fromStdString(limit.model)},
            {usedKey, limit.usedPct},
            {resetsKey, limit.resetsAt ? jsonOf(*limit.resetsAt) : QJsonValue()},
            {observedKey, jsonOf(limit.observedAt)}};
}

std::optional<Limit> limitFrom(const QJsonObject &object) {
    const std::string kindName = object.value(kindKey).toString().toStdString();
    const auto used = usedPercentage(object.value(usedKey));
    const auto observedAt = parseTimestamp(object.value(observedKey).toString().toStdString());
    for (const auto kind : {Limit::Kind::session, Limit::Kind::weekly, Limit::Kind::weeklyScoped}) {
        const std::string model = object.value(modelKey).toString().toStdString();
        if (nameOf(kind) == kindName && used && observedAt && *observedAt >= Instant() &&
            (kind == Limit::Kind::weeklyScoped) != model.empty())
            return Limit{kind,        model,
                         *used,       resetInstant(object.value(resetsKey), kind, *observedAt),
                         *observedAt, Limit::Source::statusLine};
    }
    return std::nullopt;
}

/// Returns whether the observation differs from the file's, or that is too old.
bool isNews(const Limit &limit, const std::vector<Limit> &known) {
    const auto found =
        std::ranges::find_if(known, [&limit](const Limit &other) { return isSameLimit(limit, other); });
    if (found == known.end() || found->usedPct != limit.usedPct ||
        found->resetsAt.has_value() != limit.resetsAt.has_value())
        return true;
    return (limit.resetsAt && std::chrono::abs(*limit.resetsAt - *found->resetsAt) >= tolerance) ||
           std::chrono::abs(limit.observedAt - found->observedAt) >= tolerance;
}

bool isOver(const Limit &limit, Instant now) {
    return limit.resetsAt.value_or(limit.observedAt + windowLengthOf(limit.kind)) <= now;
}

} // namespace

std::vector<Limit> LatestLimits::read(Instant now) const {
    std::vector<Limit> limits;
    try {
        const QJsonArray array = parseJsonObject(jsonFileBytes(m_file)).value(limitsKey).toArray();
        for (const QJsonValue &value : array) {
            const auto limit = limitFrom(value.toObject());
            if (limit && limit->observedAt <= now + tolerance && !isOver(*limit, now))
                mergeLimits(limits, {&*limit, 1});
        }
    } catch (const DecodeError &) {
        limits.clear();
    }
    return limits;
}

bool LatestLimits::record(std::span<const Limit> observed) const {
    if (observed.empty())
        return true;
    const Instant now = std::ranges::max(observed, {}, &Limit::observedAt).observedAt;
    std::vector<Limit> limits = read(now);
    if (std::ranges::none_of(observed, [&limits](const Limit &limit) { return isNews(limit, limits); }))
        return true;
    mergeLimits(limits, observed);
    QJsonArray array;
    for (const Limit &limit : limits)
        array.append(jsonOf(limit));
    return replaceJsonFile(m_file, {{limitsKey, array}});
}

void mergeLimits(std::vector<Limit> &limits, std::span<const Limit> observed) {
    for (const Limit &limit : observed) {
        const auto found =
            std::ranges::find_if(limits, [&limit](const Limit &known) { return isSameLimit(limit, known); });
        if (found == limits.end())
            limits.push_back(limit);
        else if (limit.observedAt >= found->observedAt)
            *found = limit;
    }
    std::ranges::stable_sort(limits, {}, &Limit::kind);
}

} // namespace burnwick
