// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "fuzz/Oracles.h"
#include "fuzz/PlainJson.h"
#include "model/Calendar.h"
#include "quota/OAuthUsageResponse.h"
#include "json/JsonReading.h"

#include <optional>
#include <string>

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

OAuthUsagePeriod requiredPeriod(const element &root, std::string_view key) {
    const auto value = lastMember(root, key);
    if (!value)
        throw NotTheAnswer();
    return period(*value);
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

std::optional<OAuthUsageResponse> naiveResponse(const element &root) {
    try {
        return OAuthUsageResponse{requiredPeriod(root, "five_hour"), requiredPeriod(root, "seven_day"),
                                  optionalPeriod(root, "seven_day_opus"),
                                  optionalPeriod(root, "seven_day_omelette"), extraUsage(root)};
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
    static_cast<void>(quotaDataFrom(*decoded));
    const auto extra = extraUsageDataFrom(*decoded, Calendar::current(), Instant());
    require(!extra || (extra->monthlyLimit > 0 && extra->currentBalance >= 0), "limits are amounts");
    return "accepted";
}

} // namespace burnwick::fuzz
