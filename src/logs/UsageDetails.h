// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/InternedString.h"
#include "model/SessionTokens.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace burnwick {

/// The usage of another model during a message, which is charged in addition.
struct AdvisorUsage {
    InternedString model;
    SessionTokens counts;

    bool operator==(const AdvisorUsage &) const = default;
};

/// What a usage line has beyond its JSONLEntry: the facts by which a message is counted once and priced.
/// Members of an unexpected type are absent, and never make a line invalid. Keys are hashes of 64 bits; 0 if
/// the line has none.
struct UsageDetails {
    std::uint64_t lineKey = 0;    ///< of `uuid`
    std::uint64_t messageKey = 0; ///< of the message's `id`
    std::uint64_t requestKey = 0; ///< of `requestId`
    InternedString session;       ///< `sessionId`; a subagent's lines have their parent's
    InternedString folder;        ///< `cwd`, the project's path
    InternedString serviceTier;
    InternedString speed;
    InternedString geography;
    std::int64_t cacheWrite5m = 0; ///< cache writes for five minutes, as `cache_creation` has them
    std::int64_t cacheWrite1h = 0; ///< and for an hour
    std::int64_t webSearches = 0;
    std::optional<std::int64_t> cost; ///< `costUSD`, in 1e-12 dollars
    bool isSidechain = false;
    bool isApiError = false;
    std::vector<AdvisorUsage> advisors;

    bool operator==(const UsageDetails &) const = default;
};

} // namespace burnwick
