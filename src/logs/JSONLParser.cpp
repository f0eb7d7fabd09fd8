// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLParser.h"

#include "logs/HistoryBuilder.h"
#include "logs/LogFileReader.h"

#include <algorithm>
#include <new>
#include <thread>
#include <unordered_set>
#include <utility>

namespace burnwick {

namespace {

/// The session has the file's name without the extension.
void assignSession(std::vector<JSONLEntry> &entries, const std::filesystem::path &file) {
    if (entries.empty())
        return;
    const InternedString session(file.stem().native());
    for (JSONLEntry &entry : entries)
        entry.setSessionId(session);
}

/// Moves the files' entries to the end of the list. A file for which memory is short adds none.
void append(std::vector<JSONLEntry> &all, std::vector<JSONLEntry> entries) {
    try {
        if (all.empty())
            all = std::move(entries);
        else
            all.insert(all.end(), entries.begin(), entries.end());
    } catch (const std::bad_alloc &) {
        // The same as with a file that cannot be read.
    }
}

/// `settledFiles` is how many of the files are settled: the first ones.
LogHistory readHistory(std::span<const LogFile> files, std::size_t settledFiles, unsigned threads,
                       const std::stop_token &stop) {
    auto entries = readUsageLines(files, threads, stop);
    LogHistory history;
    history.fileCount = static_cast<std::int64_t>(files.size());
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (i == settledFiles)
            history.firstRecent = history.entries.size();
        assignSession(entries[i], files[i].path);
        append(history.entries, std::exchange(entries[i], {}));
    }
    if (settledFiles >= files.size())
        history.firstRecent = history.entries.size();
    return history;
}

/// How many of the files, which are sorted by time, are older.
std::size_t countModifiedBefore(std::span<const LogFile> files, Instant instant) {
    const auto first = std::partition_point(files.begin(), files.end(), [instant](const LogFile &file) {
        return !file.modified || *file.modified < instant;
    });
    return static_cast<std::size_t>(first - files.begin());
}

} // namespace

JSONLParser::JSONLParser(const std::filesystem::path &home, const Calendar &calendar, const Clock &clock,
                         unsigned threads)
    : m_projectsURL(home / ".claude" / "projects")
    , m_calendar(calendar)
    , m_clock(clock)
    , m_threads(threads != 0 ? threads : std::max(1U, std::thread::hardware_concurrency())) {}

std::vector<LogFile> JSONLParser::allLogFiles(const std::stop_token &stop) const {
    return walkLogTree(m_projectsURL, std::nullopt, stop);
}

std::vector<LogFile> JSONLParser::recentLogFiles(const std::stop_token &stop) const {
    return walkLogTree(m_projectsURL, recentSince(), stop);
}

std::vector<JSONLEntry> JSONLParser::parseFile(const std::filesystem::path &file,
                                               bool assignSessionId) const {
    std::vector<JSONLEntry> entries = LogFileReader(LineSelection::all).readFile(file);
    if (assignSessionId)
        assignSession(entries, file);
    return entries;
}

std::vector<JSONLEntry> JSONLParser::parseRecentEntries() const {
    std::vector<JSONLEntry> all;
    for (auto &entries : readUsageLines(recentLogFiles(), m_threads, {}))
        append(all, std::move(entries));
    return all;
}

LogHistory JSONLParser::parseAllEntries(const std::stop_token &stop) const {
    const std::vector<LogFile> files = allLogFiles(stop);
    const Instant since = recentSince();
    const std::size_t settled = countModifiedBefore(files, since);
    LogHistory history = readHistory(files, settled, m_threads, stop);
    history.settled = {since, static_cast<std::int64_t>(settled)};
    return history;
}

std::optional<LogHistory> JSONLParser::parseUnsettledEntries(const SettledLogs &settled,
                                                             const std::stop_token &stop) const {
    const std::vector<LogFile> files = allLogFiles(stop);
    const std::size_t first = countModifiedBefore(files, settled.before);
    if (static_cast<std::int64_t>(first) != settled.fileCount)
        return std::nullopt;
    const std::size_t firstRecent = countModifiedBefore(files, std::max(recentSince(), settled.before));
    LogHistory unsettled = readHistory(std::span(files).subspan(first), firstRecent - first, m_threads, stop);
    unsettled.fileCount = static_cast<std::int64_t>(files.size());
    unsettled.settled = settled;
    return unsettled;
}

SessionTokens JSONLParser::calculateSessionTokens(std::span<const JSONLEntry> entries) {
    SessionTokens sums;
    for (const JSONLEntry &entry : entries)
        addCounts(sums, entry.counts());
    return sums;
}

double JSONLParser::calculateBurnRate(std::span<const JSONLEntry> entries) {
    std::optional<Instant> first;
    std::optional<Instant> last;
    std::int64_t tokens = 0;
    for (const JSONLEntry &entry : entries) {
        if (!entry.timestamp())
            continue;
        last = entry.timestamp();
        first = first ? first : last;
        tokens = addTokens(tokens, addTokens(entry.counts().input, entry.counts().output));
    }
    // A single dated entry has no span either.
    if (!first || *last <= *first)
        return 0;
    constexpr double nanosecondsPerMinute = 60e9;
    const double minutes = static_cast<double>(nanosecondsBetween(*first, *last)) / nanosecondsPerMinute;
    return static_cast<double>(tokens) / minutes;
}

HistoricalData JSONLParser::computeHistoricalData(std::span<const JSONLEntry> entries,
                                                  std::int64_t sessionCount) const {
    HistoryBuilder builder(m_calendar);
    for (const JSONLEntry &entry : entries)
        builder.add(entry);
    return builder.finish(sessionCount, m_calendar.dayOf(m_clock.now()));
}

HistoricalData JSONLParser::computeHistoricalData(const LogHistory &history, TimeFilter filter) const {
    const Instant now = m_clock.now();
    const auto cutOff = cutOffOf(filter, now, m_calendar);
    if (!cutOff)
        return computeHistoricalData(history.entries, history.fileCount);

    HistoryBuilder builder(m_calendar);
    std::unordered_set<InternedString> sessions;
    for (const JSONLEntry &entry : history.entries) {
        const auto instant = entry.timestamp();
        if (!instant || *instant < *cutOff)
            continue;
        builder.add(entry);
        if (!entry.sessionId().view().empty())
            sessions.insert(entry.sessionId());
    }
    return builder.finish(static_cast<std::int64_t>(sessions.size()), m_calendar.dayOf(now));
}

} // namespace burnwick
