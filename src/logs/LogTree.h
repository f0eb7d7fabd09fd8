// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLParser.h"

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace burnwick {

/// Every file named *.jsonl below the directory, hidden or not, at any depth, by time of modification and
/// then by path, bytewise; only those modified at or after `since` if that is given. Links to directories are
/// not followed; what cannot be listed is passed over. A stop request ends the walk with what it has found.
[[nodiscard]] std::vector<LogFile> walkLogTree(const std::string &root, std::optional<Instant> since,
                                               const std::stop_token &stop);

/// The instant so long after 1970, or the nearest one that Instant can hold: file systems know times beyond
/// the years 1677 to 2262. `nanoseconds` is less than a second.
[[nodiscard]] Instant nearestInstant(std::int64_t seconds, std::int64_t nanoseconds);

} // namespace burnwick
