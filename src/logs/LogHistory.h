// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "logs/LogTree.h"
#include "logs/MessageList.h"
#include "logs/ReadingPosition.h"

#include <memory>
#include <span>
#include <utility>
#include <vector>

namespace burnwick {

/// The usage lines of one log in their order, and the messages that they are from.
struct EntryList : std::vector<JSONLEntry> {
    using vector::vector;
    explicit EntryList(std::vector<JSONLEntry> entries)
        : vector(std::move(entries)) {}

    MessageList messages;

    bool operator==(const EntryList &) const = default;
};

/// The usage lines of one log file; null if it is not a regular file, could not be read to its end, or memory
/// was short.
using LogEntries = std::shared_ptr<const EntryList>;

/// The usage lines of a log tree, each held once. Never modified once made, so that threads can share it.
struct LogHistory {
    std::vector<std::filesystem::path> folders; ///< that were read; all files are below them
    std::vector<LogFile> files;             ///< the tree as it was before it was read, by time, then by path
    std::vector<LogEntries> entries;        ///< of each file
    std::vector<ReadingPosition> positions; ///< of each file that has entries
    /// The kept usage lines of deleted logs, a list for each session; no list is null or empty.
    std::vector<LogEntries> kept;

    /// Returns the entries of the files modified at or after that instant.
    [[nodiscard]] std::span<const LogEntries> entriesSince(Instant instant) const;
};

} // namespace burnwick
