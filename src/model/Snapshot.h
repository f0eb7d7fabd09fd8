// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/ClaudeComponentStatus.h"
#include "model/ExtraUsageData.h"
#include "model/FigureChoice.h"
#include "model/HistoricalData.h"
#include "model/Limit.h"
#include "model/OAuthStatus.h"
#include "model/QuotaData.h"
#include "model/SessionTokens.h"
#include "model/StatusIndicator.h"
#include "model/TimeFilter.h"
#include "model/UsageBreakdown.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace burnwick {

/// The figures of the logs. The session consists of the files modified within the last day. Costs are US
/// dollars.
struct UsageFigures {
    Calendar calendar;                                  ///< of the history's days and hours
    TimeFilter timeFilter = TimeFilter::all;            ///< the history's period
    FigureChoice figureChoice = FigureChoice::asLogged; ///< of the session's figures and historicalData

    std::optional<Instant> sessionReadAt{}; ///< absent before the first reading
    std::size_t recentFileCount = 0;        ///< the number of files in the session
    bool hasJSONLData = false;              ///< whether the recent files have any usage line
    SessionTokens sessionTokens{};
    double sessionCost = 0;
    double burnRateTokensPerMin = 0;
    double projectedTodayCost = 0; ///< for 24 hours at the burn rate, whatever the time of day
    double projectedWeeklyCost = 0;
    double projectedMonthlyCost = 0;
    SessionFigures loggedSession{}; ///< each line counted, at one price for all models
    SessionFigures exactSession{};  ///< each message counted once, at its model's price

    std::optional<Instant> historyReadAt{}; ///< absent before the first reading
    HistoricalData historicalData{};        ///< empty before the first reading
    /// The exact figures of the same period, whatever the choice; never null.
    std::shared_ptr<const UsageBreakdown> breakdown = noUsage();
    std::optional<Instant> oldestLog{};      ///< the earliest time of modification of a log
    std::int64_t keptSessions = 0;           ///< that have lines in no log any more
    std::int64_t keptMessages = 0;           ///< the number of these lines
    std::vector<LimitCourse> limitCourses{}; ///< of AccountFigures::limits, in their order
    Instant lastUpdated{}; ///< when historicalData was last computed; the creation time before that

    bool operator==(const UsageFigures &) const = default;
};

/// The figures of the account and of the service. A failed request keeps the previous figures.
struct AccountFigures {
    OAuthStatus oauthStatus = OAuthStatus::unknown;
    bool awaitsFirstQuota = false; ///< whether a login exists and this run's first request is running
    /// Why the last request for the quota failed, without secrets and addresses; empty after a success.
    std::string quotaFailure;

    std::optional<QuotaData> quotaData;
    std::optional<Instant> quotaReadAt; ///< of quotaData; absent before the first answer
    bool isQuotaStale = false;          ///< whether quotaData is older than two refreshes
    std::vector<Limit> limits;          ///< the latest observation of each; session, weekly, scoped ones
    /// When the user's latest refresh sent no request, because the service had just refused one: the instant
    /// of the next request.
    std::optional<Instant> asksAgainAt;
    std::optional<ExtraUsageData> extraUsage;
    std::optional<Instant> extraUsageReadAt; ///< absent before the first answer that has extra usage
    std::vector<ClaudeComponentStatus> claudeStatus;
    std::optional<Instant> claudeStatusReadAt; ///< absent before the first answer

    [[nodiscard]] StatusIndicator statusIndicator() const noexcept { return statusIndicatorFor(quotaData); }

    bool operator==(const AccountFigures &) const = default;
};

/// All values that Burnwick shows, at one moment.
struct Snapshot {
    UsageFigures usage;
    AccountFigures account;
};

} // namespace burnwick
