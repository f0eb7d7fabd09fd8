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
    /// Of the new entries before the position's offset.
    std::vector<UsageDetails> newDetails{};
};

/// Remembers readings from one run to the next. Never fails: what it cannot store or load is unknown. Used by
/// one JSONLParser at a time, from one thread, except for keep().
class ReadingStore {
public:
    virtual ~ReadingStore() = default;

    /// Sets entries and positions of those files whose entries are null and which it knows; they may have
    /// changed since.
    virtual void recall(LogHistory &history) = 0;
    /// Stores a file's reading. `continued` is the position where it began; null if that was the file's
    /// begin. Safe from several threads at once.
    virtual void keep(const std::filesystem::path &file, const ReadingPosition *continued,
                      const FileReading &reading) = 0;
    /// Ends a series of calls of keep(). Forgets files that are not in the history if it is not null.
    virtual void finish(const LogHistory *history) = 0;
};

} // namespace burnwick
