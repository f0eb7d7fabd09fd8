// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/HistoryBuilder.h"
#include "logs/JSONLEntry.h"
#include "model/Calendar.h"
#include "model/Clock.h"
#include "model/SessionTokens.h"
#include "model/TimeFilter.h"

#include <cstdint>
#include <filesystem>
#include <optional>
#include <span>
#include <stop_token>
#include <string>
#include <vector>

namespace burnwick {

/// A file of the log tree, as the walk found it.
struct LogFile {
    std::string path;
    std::optional<Instant> modified; ///< absent when that could not be learned
    std::uint64_t size = 0;
    bool regular = false; ///< a regular file, or a link to one; nothing else is ever opened
};

/// Log files that are not expected to change any more: those last modified before an instant.
struct SettledLogs {
    Instant before;
    std::int64_t fileCount = 0;
};

/// All the usage lines of a log tree.
struct LogHistory {
    std::vector<JSONLEntry> entries;
    SettledLogs settled;         ///< all but the recent files
    std::int64_t fileCount = 0;  ///< log files found, readable or not
    std::size_t firstRecent = 0; ///< from here on the entries are of files modified within the last day
};

/// Finds and reads the session logs of Claude Code. Keeps nothing between calls and reads only; what cannot
/// be read is passed over in silence. Safe from any thread, but for setCalendar().
class JSONLParser {
public:
    /// `home` is the user's home directory; `threads` is how many work at most, 0 for one per core.
    JSONLParser(const std::filesystem::path &home, const Calendar &calendar, const Clock &clock,
                unsigned threads = 0);

    /// For all later calls. Copies keep theirs; not while another thread uses this object.
    void setCalendar(const Calendar &calendar) { m_calendar = calendar; }

    /// The directory below which the logs lie: ".claude/projects" of the home directory.
    [[nodiscard]] const std::filesystem::path &projectsURL() const noexcept { return m_projectsURL; }

    /// Every file named *.jsonl at any depth, by time of modification, then by path. A stop request ends the
    /// search with what it has found.
    [[nodiscard]] std::vector<LogFile> allLogFiles(const std::stop_token &stop = {}) const;
    /// Those modified within the last day: since the same time of yesterday.
    [[nodiscard]] std::vector<LogFile> recentLogFiles(const std::stop_token &stop = {}) const;

    /// All entries of a file in the order of its lines, not only those that count; with the session named by
    /// the file if asked. A file that cannot be read, for which memory is short, or which has a byte of
    /// invalid UTF-8 anywhere yields none; a line longer than LogFileReader::defaultLongestLine is passed
    /// over.
    [[nodiscard]] std::vector<JSONLEntry> parseFile(const std::filesystem::path &file,
                                                    bool assignSessionId) const;
    /// The usage lines of the recent files, without sessions, in file order, then line order.
    [[nodiscard]] std::vector<JSONLEntry> parseRecentEntries() const;
    /// The usage lines of all files with their sessions, in the same order. A stop request ends the reading
    /// early; the result is then of no use.
    [[nodiscard]] LogHistory parseAllEntries(const std::stop_token &stop = {}) const;
    /// The part of parseAllEntries() that is not settled: reads only the files modified since. None when the
    /// settled files are no longer the same ones, as when an old session was resumed; then all must be read.
    [[nodiscard]] std::optional<LogHistory> parseUnsettledEntries(const SettledLogs &settled,
                                                                  const std::stop_token &stop = {}) const;

    /// Sums over the entries; ends the program when one overflows.
    [[nodiscard]] static SessionTokens calculateSessionTokens(std::span<const JSONLEntry> entries);
    /// Input and output tokens per minute between the first and the last dated entry of the list; 0 when
    /// there are not two, or the last is not later than the first.
    [[nodiscard]] static double calculateBurnRate(std::span<const JSONLEntry> entries);

    /// The history of the entries, all of them counted.
    [[nodiscard]] HistoricalData computeHistoricalData(std::span<const JSONLEntry> entries,
                                                       std::int64_t sessionCount) const;
    /// The history of those entries that fall into the filter's period. With `all` the log files are the
    /// sessions, otherwise the distinct sessions of the entries that are left.
    [[nodiscard]] HistoricalData computeHistoricalData(const LogHistory &history, TimeFilter filter) const;

private:
    [[nodiscard]] LogHistory parseFiles(std::span<const LogFile> files, std::size_t firstRecentFile,
                                        bool assignSessionId, const std::stop_token &stop) const;
    [[nodiscard]] Instant recentSince() const;

    std::filesystem::path m_projectsURL;
    Calendar m_calendar;
    const Clock &m_clock;
    unsigned m_threads;
};

} // namespace burnwick
