// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/StatusTitle.h"
#include "logs/JSONLParser.h"
#include "model/ClaudeComponentStatus.h"
#include "model/Cost.h"
#include "model/ExtraUsageData.h"
#include "model/HistoricalData.h"
#include "model/OAuthStatus.h"
#include "model/QuotaData.h"
#include "model/SessionTokens.h"
#include "model/StatusIndicator.h"
#include "model/TimeFilter.h"

#include <optional>
#include <span>
#include <vector>

namespace burnwick {

/// The figures of the current session: of the logs touched within the last day.
struct SessionFigures {
    bool hasJSONLData = false; ///< whether those logs have any usage line
    SessionTokens tokens;
    double cost = 0; ///< dollars
    double burnRateTokensPerMin = 0;
    ProjectedCosts projected;
    std::optional<QuotaData> quota; ///< absent while none is known

    [[nodiscard]] StatusIndicator indicator() const noexcept { return statusIndicatorFor(quota); }
    [[nodiscard]] StatusTitle title() const { return buildStatusTitle(tokens, cost, quota, indicator()); }

    bool operator==(const SessionFigures &) const = default;
};

/// What the vendor's services tell beside the quota.
struct AccountFigures {
    OAuthStatus oauthStatus = OAuthStatus::unknown;
    std::optional<ExtraUsageData> extraUsage;
    std::optional<std::vector<ClaudeComponentStatus>> claudeStatus; ///< absent when it could not be had

    bool operator==(const AccountFigures &) const = default;
};

/// Everything that a report tells.
struct ReportFigures {
    SessionFigures session;
    std::optional<AccountFigures> account;   ///< absent when nobody was asked
    Instant now;                             ///< to which the times that remain count
    TimeFilter timeFilter = TimeFilter::all; ///< the period of the history
    HistoricalData history;
    LocalDay today; ///< the last day of the history's activity
};

/// Sums up the usage lines of the recent logs; ends the program when a sum overflows.
[[nodiscard]] SessionFigures sessionFigures(std::span<const JSONLEntry> recentEntries);

/// The session's figures alone; reads the recent logs only.
[[nodiscard]] SessionFigures readSession(const JSONLParser &parser);

/// The session and the history of the period, from one reading of all the logs. `today` is the day by the
/// parser's clock and calendar.
[[nodiscard]] ReportFigures readReport(const JSONLParser &parser, TimeFilter timeFilter, LocalDay today);

} // namespace burnwick
