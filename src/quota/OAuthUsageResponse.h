// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/ExtraUsageData.h"
#include "model/QuotaData.h"

#include <QByteArray>

#include <optional>
#include <string>

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

/// The body of the usage endpoint's response.
struct OAuthUsageResponse {
    OAuthUsagePeriod fiveHour;
    OAuthUsagePeriod sevenDay;
    std::optional<OAuthUsagePeriod> sevenDayOpus; ///< not shown
    std::optional<OAuthUsagePeriod> sevenDayOmelette;
    std::optional<OAuthExtraUsage> extraUsage;

    bool operator==(const OAuthUsageResponse &) const = default;
};

/// Throws DecodeError. Disabled extra usage with a null number becomes null.
[[nodiscard]] OAuthUsageResponse decodeUsageResponse(const QByteArray &body);
/// Returns JSON that decodeUsageResponse() decodes to an equal value.
[[nodiscard]] QByteArray encodeUsageResponse(const OAuthUsageResponse &response);

/// An instant that does not parse becomes null.
[[nodiscard]] QuotaData quotaDataFrom(const OAuthUsageResponse &response);
/// Returns null unless extra usage is enabled with a limit above zero. The reset is at the end of the month
/// of `now`.
[[nodiscard]] std::optional<ExtraUsageData> extraUsageDataFrom(const OAuthUsageResponse &response,
                                                               const Calendar &calendar, Instant now);

} // namespace burnwick
