// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/JSONLEntry.h"
#include "logs/LogTree.h"
#include "model/Calendar.h"
#include "model/Clock.h"
#include "model/HistoricalData.h"
#include "model/SessionTokens.h"
#include "model/TimeFilter.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <stop_token>
#include <vector>

namespace burnwick {

/// Log files that are not expected to change any more: those last modified before an instant.
struct SettledLogs {
    Instant before;
    std::int64_t fileCount = 0;
};

/// All usage lines of a log tree.
struct LogHistory {
    std::vector<JSONLEntry> entries;
    SettledLogs settled;         ///< all but the recent files
    std::int64_t fileCount = 0;  ///< log files found, readable or not
    std::size_t firstRecent = 0; ///< index of the first entry of a file modified within the last day
};

/// Reads the session logs of Claude Code and computes figures of their entries. Keeps nothing between calls
/// and never writes; what cannot be read is ignored. Safe from any thread, except setCalendar().
class JSONLParser {
public:
    /// `home` is the user's home directory; `threads` the most that read at once, 0 for one per core.
    JSONLParser(const std::filesystem::path &home, const Calendar &calendar, const Clock &clock,
                unsigned threads = 0);

    /// For all later calls; copies made before keep theirs. Not while another thread uses this object.
    void setCalendar(const Calendar &calendar) { m_calendar = calendar; }

    /// The directory of the logs: ".claude/projects" of the home directory.
    [[nodiscard]] const std::filesystem::path &projectsURL() const noexcept { return m_projectsURL; }

    /// Every file named *.jsonl at any depth, by time of modification, then by path. A stop request ends the
    /// search early.
    [[nodiscard]] std::vector<LogFile> allLogFiles(const std::stop_token &stop = {}) const;
    /// Those modified since the same time of yesterday.
    [[nodiscard]] std::vector<LogFile> recentLogFiles(const std::stop_token &stop = {}) const;

    /// All entries of a file in the order of its lines, usage lines or not; with the session that the file's
    /// name gives if `assignSessionId`. Empty if the file cannot be read, is not UTF-8 throughout, or memory
    /// is short. Lines longer than LogFileReader::defaultLongestLine are ignored.
    [[nodiscard]] std::vector<JSONLEntry> parseFile(const std::filesystem::path &file,
                                                    bool assignSessionId) const;
    /// The usage lines of the recent files, without sessions, in file order, then line order.
    [[nodiscard]] std::vector<JSONLEntry> parseRecentEntries() const;
    /// The usage lines of all files with their sessions, in the same order. After a stop request the result
    /// is incomplete.
    [[nodiscard]] LogHistory parseAllEntries(const std::stop_token &stop = {}) const;
    /// The part of parseAllEntries() that is not settled: reads only the files modified since. Null if the
    /// settled files are no longer the same, as when an old session was resumed; then all must be read.
    [[nodiscard]] std::optional<LogHistory> parseUnsettledEntries(const SettledLogs &settled,
                                                                  const std::stop_token &stop = {}) const;

    /// Sums over the entries; ends the program when one overflows.
    [[nodiscard]] static SessionTokens calculateSessionTokens(std::span<const JSONLEntry> entries);
    /// Input and output tokens per minute between the first and the last dated entry of the list; 0 if fewer
    /// than two are dated, or the last is not later than the first.
    [[nodiscard]] static double calculateBurnRate(std::span<const JSONLEntry> entries);

    /// The history of all the entries.
    [[nodiscard]] HistoricalData computeHistoricalData(std::span<const JSONLEntry> entries,
                                                       std::int64_t sessionCount) const;
    /// The history of the entries in the filter's period. With `all` the sessions are the log files,
    /// otherwise the distinct sessions of those entries.
    [[nodiscard]] HistoricalData computeHistoricalData(const LogHistory &history, TimeFilter filter) const;

private:
    [[nodiscard]] Instant recentSince() const { return m_calendar.daysBefore(m_clock.now(), 1); }

    std::filesystem::path m_projectsURL;
    Calendar m_calendar;
    const Clock &m_clock;
    unsigned m_threads;
};

} // namespace burnwick
