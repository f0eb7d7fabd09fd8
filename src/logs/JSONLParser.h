// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "async/StoppableThread.h"
#include "logs/ReadingStore.h"
#include "model/HistoricalData.h"
#include "model/SessionTokens.h"
#include "model/TimeFilter.h"

#include <filesystem>
#include <memory>
#include <set>
#include <span>
#include <vector>

namespace burnwick {

/// Reads the session logs of Claude Code and computes figures of their entries. Keeps nothing between calls
/// and never writes; ignores what cannot be read. Safe from any thread.
class JSONLParser {
public:
    /// `home` is the user's home directory, whose logs are in ".claude/projects"; `threads` the most that
    /// read at once, 0 for one per core.
    explicit JSONLParser(const std::filesystem::path &home, unsigned threads = 0);
    /// Reads the logs in these folders, at least one, at any depth. They need not exist.
    explicit JSONLParser(std::vector<std::filesystem::path> folders, unsigned threads = 0);

    /// The directory of the logs, and the first of several.
    [[nodiscard]] const std::filesystem::path &projectsURL() const noexcept { return m_folders.front(); }
    [[nodiscard]] const std::vector<std::filesystem::path> &folders() const noexcept { return m_folders; }

    /// Returns the files modified at or after `since`, and their usage lines. Reads only what the store does
    /// not know, and stores nothing.
    [[nodiscard]] std::shared_ptr<const LogHistory> parseRecentEntries(Instant since,
                                                                       ReadingStore *store = nullptr) const;
    /// Returns all files and their usage lines. Reads only what neither the last history nor the store knows,
    /// and stores that. Null if nothing changed since the last history, or a stop was requested. Throws
    /// std::bad_alloc.
    [[nodiscard]] std::shared_ptr<const LogHistory> parseAllEntries(const LogHistory *last = nullptr,
                                                                    ReadingStore *store = nullptr,
                                                                    const StopRequest &stop = {}) const;
    /// The same where at most the named files changed since the last history, and each change was announced.
    /// Ignores names that are no log files.
    [[nodiscard]] std::shared_ptr<const LogHistory>
    parseChangedEntries(const LogHistory &last, const std::set<std::filesystem::path> &changed,
                        ReadingStore *store = nullptr, const StopRequest &stop = {}) const;

    /// Returns the sums over the entries; terminates the program if one overflows.
    [[nodiscard]] static SessionTokens calculateSessionTokens(std::span<const LogEntries> entries);
    /// Returns input and output tokens per minute between the first and the last dated entry of the lists; 0
    /// if fewer than two are dated, or the last is not later than the first. Terminates the program if the
    /// sum overflows.
    [[nodiscard]] static double calculateBurnRate(std::span<const LogEntries> entries);

    /// Returns the history of the entries in the filter's period before `now`; see HistorySums::within().
    [[nodiscard]] static HistoricalData computeHistoricalData(const LogHistory &history, TimeFilter filter,
                                                              const Calendar &calendar, Instant now);

private:
    [[nodiscard]] std::shared_ptr<const LogHistory> readChanges(std::shared_ptr<LogHistory> history,
                                                                const LogHistory *last, Watch watch,
                                                                ReadingStore *store,
                                                                const StopRequest &stop) const;

    [[nodiscard]] std::shared_ptr<LogHistory> historyOf(std::vector<LogFile> files) const;

    std::vector<std::filesystem::path> m_folders;
    unsigned m_threads;
};

} // namespace burnwick
