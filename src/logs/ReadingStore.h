// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/LogHistory.h"
#include "logs/UsageDetails.h"

#include <filesystem>
#include <optional>
#include <span>
#include <vector>

namespace burnwick {

/// The usage lines of a log file and how far it was read.
struct FileReading {
    LogEntries entries; ///< never null
    ReadingPosition position;
    bool isContinued = false; ///< whether it began where the former reading ended
    /// Of the entries behind those of the former reading's position.
    std::vector<UsageDetails> newDetails{};
};

/// Remembers readings from one run to the next. Never fails: what it cannot store or load is unknown. Used by
/// one JSONLParser at a time, from one thread, except for keep().
class ReadingStore {
public:
    virtual ~ReadingStore() = default;

    /// Sets entries and positions of those files whose entries are null and which it knows; they may have
    /// changed since. May set entries to null or to another reading, so that the file is read and stored
    /// again.
    virtual void recall(LogHistory &history) = 0;
    /// Stores a file's reading. `continued` is the position where it began; null if that was the file's
    /// begin. Returns false if it needs a reading from the file's begin instead. Safe from several threads at
    /// once.
    [[nodiscard]] virtual bool keep(const std::filesystem::path &file, const ReadingPosition *continued,
                                    const FileReading &reading) = 0;
    /// Ends a series of calls of keep(). Logs that are not in the history count as deleted; null if it is
    /// incomplete. Returns LogHistory::kept, with the same lists as before if nothing changed; null if the
    /// series must be repeated from recall() on.
    virtual std::optional<std::vector<LogEntries>> finish(const LogHistory *history) = 0;
};

} // namespace burnwick
