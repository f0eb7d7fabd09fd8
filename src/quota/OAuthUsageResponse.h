// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/ExtraUsageData.h"
#include "model/Limit.h"
#include "model/QuotaData.h"

#include <QByteArray>

#include <optional>
#include <string>
#include <vector>

namespace burnwick {

/// One rolling window of the usage endpoint's response.
struct OAuthUsagePeriod {
    double utilization = 0;              ///< percent used
    std::optional<std::string> resetsAt; ///< ISO 8601, as received

    bool operator==(const OAuthUsagePeriod &) const = default;
};

/// The paid extra usage; amounts are cents.
struct OAuthExtraUsage {
    bool isEnabled = false;
    double monthlyLimit = 0;
    double usedCredits = 0; ///< so far this month
    double utilization = 0; ///< percent of the limit used

    bool operator==(const OAuthExtraUsage &) const = default;
};

/// An element of the list of limits, whose reset is null or an instant.
struct OAuthUsageLimit {
    Limit::Kind kind = Limit::Kind::session;
    OAuthUsagePeriod period;
    std::string model{}; ///< the display name of what a scoped limit covers; empty for others

    bool operator==(const OAuthUsageLimit &) const = default;
};

/// The body of the usage endpoint's response.
struct OAuthUsageResponse {
    std::optional<OAuthUsagePeriod> fiveHour;     ///< null only with a session limit in `limits`
    std::optional<OAuthUsagePeriod> sevenDay;     ///< null only with any limit in `limits`
    std::optional<OAuthUsagePeriod> sevenDayOpus; ///< not shown
    std::optional<OAuthUsagePeriod> sevenDayOmelette;
    std::optional<OAuthExtraUsage> extraUsage;
    std::vector<OAuthUsageLimit> limits{}; ///< as received, without malformed elements

    bool operator==(const OAuthUsageResponse &) const = default;
};

/// Throws DecodeError. Disabled extra usage with a null number becomes null. Ignores malformed elements of
/// the list of limits and those of an unknown kind; a negative percentage in it becomes 0.
[[nodiscard]] OAuthUsageResponse decodeUsageResponse(const QByteArray &body);
/// Returns JSON that decodeUsageResponse() decodes to an equal value.
[[nodiscard]] QByteArray encodeUsageResponse(const OAuthUsageResponse &response);

/// Takes the limit of the list where a window is null; without either the window is unused. An instant that
/// does not parse becomes null.
[[nodiscard]] QuotaData quotaDataFrom(const OAuthUsageResponse &response);
/// Returns the distinct limits. Where a window and an element of the list are the same limit, the window
/// wins.
[[nodiscard]] std::vector<Limit> limitsFrom(const OAuthUsageResponse &response, Instant observedAt);
/// Returns null unless extra usage is enabled with a limit above zero. The reset is at the end of the month
/// of `now`.
[[nodiscard]] std::optional<ExtraUsageData> extraUsageDataFrom(const OAuthUsageResponse &response,
                                                               const Calendar &calendar, Instant now);

} // namespace burnwick
