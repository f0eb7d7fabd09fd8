// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLParser.h"
#include "model/Snapshot.h"

#include <memory>
#include <span>
#include <stop_token>
#include <vector>

namespace burnwick {

/// The entries of all logs, each held once. Never modified once made, so that threads can share it.
struct LogReading {
    using Entries = std::vector<JSONLEntry>;

    std::vector<LogFile> files;      ///< the tree as it was before it was read
    std::size_t recentFileCount = 0; ///< files modified within the last day
    SettledLogs settled;             ///< the files that the next readings skip
    std::shared_ptr<const Entries> settledEntries;
    Entries unsettledEntries;
    std::size_t firstRecent = 0; ///< from here on the unsettled entries are of the recent files

    [[nodiscard]] std::span<const JSONLEntry> recentEntries() const {
        return std::span(unsettledEntries).subspan(firstRecent);
    }
};

/// Reads all logs; after a last reading only the unsettled files, if the settled ones are still the same and
/// were read within a day. Returns null if stopped, and if neither the files nor the set of recent ones
/// changed since the last reading. `calendar` is the parser's. Throws std::bad_alloc. Safe from any thread.
[[nodiscard]] std::shared_ptr<const LogReading> readLogs(const JSONLParser &parser, const Calendar &calendar,
                                                         Instant now, const LogReading *last = nullptr,
                                                         const std::stop_token &stop = {});

/// Sets the session's figures. Terminates the program when a sum overflows.
void updateSession(UsageFigures &figures, std::span<const JSONLEntry> recentEntries, Instant readAt);

/// Sets the history of the figures' period in their calendar. Terminates the program when a sum overflows.
void updateHistory(UsageFigures &figures, const LogReading &reading, Instant now);

} // namespace burnwick
