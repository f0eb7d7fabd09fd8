// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "fuzz/PlainJson.h"
#include "model/Calendar.h"
#include "model/Timestamp.h"
#include "quota/OAuthUsageResponse.h"
#include "json/JsonReading.h"

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

namespace burnwick::fuzz {

namespace {

using simdjson::dom::element;

/// Thrown by the plain reading for a malformed answer.
struct NotTheAnswer {};

bool isMissing(const std::optional<element> &value) {
    return !value || value->is_null();
}

double number(const element &object, std::string_view key) {
    const auto value = lastMember(object, key);
    if (!value || !value->is_number())
        throw NotTheAnswer();
    return value->get_double().value_unsafe();
}

OAuthUsagePeriod period(const element &object) {
    OAuthUsagePeriod period{number(object, "utilization"), std::nullopt};
    const auto reset = lastMember(object, "resets_at");
    if (isMissing(reset))
        return period;
    if (!reset->is_string())
        throw NotTheAnswer();
    period.resetsAt = std::string(reset->get_string().value_unsafe());
    return period;
}

std::optional<OAuthUsagePeriod> optionalPeriod(const element &root, std::string_view key) {
    const auto value = lastMember(root, key);
    if (isMissing(value))
        return std::nullopt;
    return period(*value);
}

std::optional<OAuthExtraUsage> extraUsage(const element &root) {
    const auto value = lastMember(root, "extra_usage");
    if (isMissing(value))
        return std::nullopt;
    const auto enabled = lastMember(*value, "is_enabled");
    if (!enabled || !enabled->is_bool())
        throw NotTheAnswer();
    OAuthExtraUsage usage{enabled->get_bool().value_unsafe(), 0, 0, 0};
    bool anyNull = false;
    const auto read = [&](std::string_view key) {
        const auto amount = lastMember(*value, key);
        const bool null = !usage.isEnabled && amount && amount->is_null();
        anyNull = anyNull || null;
        return null ? 0 : number(*value, key);
    };
    usage.monthlyLimit = read("monthly_limit");
    usage.usedCredits = read("used_credits");
    usage.utilization = read("utilization");
    return anyNull ? std::nullopt : std::optional(usage);
}

std::string text(const std::optional<element> &value) {
    return value && value->is_string() ? std::string(value->get_string().value_unsafe()) : std::string();
}

OAuthUsageLimit limit(const element &object) {
    OAuthUsageLimit limit;
    const std::string kind = text(lastMember(object, "kind"));
    if (kind == "weekly_all")
        limit.kind = Limit::Kind::weekly;
    else if (kind == "weekly_scoped")
        limit.kind = Limit::Kind::weeklyScoped;
    else if (kind != "session")
        throw NotTheAnswer();
    limit.period.utilization = std::max(0.0, number(object, "percent"));
    const auto reset = lastMember(object, "resets_at");
    if (!isMissing(reset))
        limit.period.resetsAt = text(reset);
    if (!reset || (limit.period.resetsAt && !parseTimestamp(*limit.period.resetsAt)))
        throw NotTheAnswer();
    if (limit.kind != Limit::Kind::weeklyScoped)
        return limit;
    const auto scope = lastMember(object, "scope");
    const auto model = scope ? lastMember(*scope, "model") : std::nullopt;
    limit.model = model ? text(lastMember(*model, "display_name")) : std::string();
    if (limit.model.empty())
        throw NotTheAnswer();
    return limit;
}

std::vector<OAuthUsageLimit> limits(const element &root) {
    std::vector<OAuthUsageLimit> limits;
    const auto list = lastMember(root, "limits");
    simdjson::dom::array elements;
    if (!list || list->get_array().get(elements) != simdjson::SUCCESS)
        return limits;
    for (const element object : elements) {
        try {
            limits.push_back(limit(object));
        } catch (const NotTheAnswer &) {
            // costs the element alone
        }
    }
    return limits;
}

std::optional<OAuthUsageResponse> naiveResponse(const element &root) {
    try {
        OAuthUsageResponse response{optionalPeriod(root, "five_hour"),
                                    optionalPeriod(root, "seven_day"),
                                    optionalPeriod(root, "seven_day_opus"),
                                    optionalPeriod(root, "seven_day_omelette"),
                                    extraUsage(root),
                                    limits(root)};
        const bool hasSession = std::ranges::any_of(
            response.limits, [](const OAuthUsageLimit &limit) { return limit.kind == Limit::Kind::session; });
        if ((!response.fiveHour && !hasSession) || (!response.sevenDay && response.limits.empty()))
            throw NotTheAnswer();
        return response;
    } catch (const NotTheAnswer &) {
        return std::nullopt;
    }
}

std::optional<OAuthUsageResponse> response(std::string_view body) {
    try {
        return decodeUsageResponse({body.data(), static_cast<qsizetype>(body.size())});
    } catch (const DecodeError &) {
        return std::nullopt;
    }
}

} // namespace

const char *checkUsageResponse(std::string_view input) {
    const auto decoded = response(input);
    const auto root = plainReading(input);
    if (root && !mayBeBeyondPlainReading(input) && !hasByteOrderMark(input))
        require(decoded == naiveResponse(*root), "an answer decodes to its members");
    if (!decoded)
        return "refused";
    require(decodeUsageResponse(encodeUsageResponse(*decoded)) == *decoded || hasByteOrderMark(input),
            "an answer is read back");
    const auto all = limitsFrom(*decoded, Instant());
    require(!all.empty() && all.front().kind == Limit::Kind::session && all.size() <= 22,
            "the list is short and begins with the session");
    require(std::ranges::all_of(all, [](const Limit &limit) { return limit.usedPct >= 0; }),
            "limits have percentages");
    const auto quota = quotaDataFrom(*decoded);
    require(quota.fiveHourUsagePct < 0 || quota.fiveHourUsagePct == all.front().usedPct,
            "the quota and the limits agree");
    const auto extra = extraUsageDataFrom(*decoded, Calendar::current(), Instant());
    require(!extra || (extra->monthlyLimit > 0 && extra->currentBalance >= 0), "limits are amounts");
    return "accepted";
}

} // namespace burnwick::fuzz
