// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/SessionTokens.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <string_view>

namespace burnwick::bench {

/// What was written into a tree of logs, counted while writing: a parser must find exactly this.
struct LogFacts {
    std::uint64_t bytes = 0;
    std::int64_t files = 0;
    std::uint64_t largestFile = 0; ///< in bytes
    std::int64_t usageLines = 0;
    SessionTokens tokens;
    /// Over each usage line's session, model, time and counts, in file order and then line order.
    std::uint64_t lineHash = 0;

    void addUsageLine(std::string_view session, std::string_view model, std::int64_t milliseconds,
                      const SessionTokens &counts);

    bool operator==(const LogFacts &) const = default;
};

/// The facts are kept in a text file beside the logs; absent while a tree is incomplete.
[[nodiscard]] std::optional<LogFacts> loadFacts(const std::filesystem::path &tree);
/// Throws std::runtime_error when they cannot be written.
void saveFacts(const LogFacts &facts, const std::filesystem::path &tree);

} // namespace burnwick::bench
