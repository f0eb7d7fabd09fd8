// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/HistoricalData.h"
#include "model/Instant.h"
#include "model/SessionTokens.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace burnwick {

/// The cost of some messages at API prices.
struct PricedTokens {
    std::int64_t tokens = 0;   ///< of all kinds
    std::int64_t unpriced = 0; ///< those of the tokens that the price list has no price for
    double cost = 0;           ///< of the others, in US dollars

    /// Returns whether the price list has prices for any of the tokens; true without tokens.
    [[nodiscard]] bool hasPrice() const { return unpriced < tokens || tokens == 0; }
    bool operator==(const PricedTokens &) const = default;
};

/// The figures of the session.
struct SessionFigures {
    SessionTokens tokens{};
    double cost = 0;
    std::int64_t unpricedTokens = 0; ///< counted, but not in the cost
    double burnRateTokensPerMin = 0;
    double projectedTodayCost = 0; ///< for 24 hours at the burn rate, whatever the time of day
    double projectedWeeklyCost = 0;
    double projectedMonthlyCost = 0;

    bool operator==(const SessionFigures &) const = default;
};

/// The use of one model, each message counted once.
struct ModelUsage {
    std::string name; ///< as logged; empty if the messages have none
    std::int64_t input = 0;
    std::int64_t output = 0;
    std::int64_t cacheWrite5m = 0; ///< kept for five minutes
    std::int64_t cacheWrite1h = 0; ///< and for an hour
    std::int64_t cacheRead = 0;
    std::int64_t webSearches = 0;
    PricedTokens total{};

    bool operator==(const ModelUsage &) const = default;
};

/// The use in one folder.
struct ProjectUsage {
    std::string path;                              ///< UTF-8; empty for messages without a folder
    std::int64_t sessions = 0;                     ///< the number of distinct sessions
    PricedTokens total{};                          ///< each message counted once
    std::int64_t loggedTokens = 0;                 ///< the tokens of all lines
    std::optional<Instant> lastUsed{};             ///< null if no line has a time
    std::map<LocalDay, PricedTokens> days{};       ///< each message counted once
    std::map<LocalDay, std::int64_t> loggedDays{}; ///< the tokens of all lines

    bool operator==(const ProjectUsage &) const = default;
};

/// The use of Claude Code in a period, each message counted once, at its model's price.
struct UsageBreakdown {
    HistoricalData history; ///< sessions are those of the logs
    PricedTokens total{};
    std::vector<ModelUsage> models;     ///< in the order of their names
    std::vector<ProjectUsage> projects; ///< in the order of their paths
    std::map<LocalDay, PricedTokens> days;

    bool operator==(const UsageBreakdown &) const = default;
};

/// Returns the use without any message. Ends the program if memory is short. Safe from any thread.
[[nodiscard]] std::shared_ptr<const UsageBreakdown> noUsage() noexcept;

} // namespace burnwick
