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

/// One rolling window of the usage endpoint's answer.
struct OAuthUsagePeriod {
    double utilization = 0;              ///< percent used
    std::optional<std::string> resetsAt; ///< ISO 8601, as it came

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

/// The body of the usage endpoint's answer.
struct OAuthUsageResponse {
    OAuthUsagePeriod fiveHour;
    OAuthUsagePeriod sevenDay;
    std::optional<OAuthUsagePeriod> sevenDayOpus; ///< shown nowhere
    std::optional<OAuthUsagePeriod> sevenDayOmelette;
    std::optional<OAuthExtraUsage> extraUsage;

    bool operator==(const OAuthUsageResponse &) const = default;
};

/// Throws DecodeError. An extra usage that is switched off and names a null among its numbers counts as none.
[[nodiscard]] OAuthUsageResponse decodeUsageResponse(const QByteArray &body);
/// The JSON that decodeUsageResponse() reads back to an equal value.
[[nodiscard]] QByteArray encodeUsageResponse(const OAuthUsageResponse &response);

/// An instant that does not parse counts as none.
[[nodiscard]] QuotaData quotaDataFrom(const OAuthUsageResponse &response);
/// None unless extra usage is switched on with a limit above zero. `now` decides the days left in the month.
[[nodiscard]] std::optional<ExtraUsageData> extraUsageDataFrom(const OAuthUsageResponse &response,
                                                               const Calendar &calendar, Instant now);

} // namespace burnwick
