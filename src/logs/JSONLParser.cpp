// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLParser.h"

#include "logs/LogFileReader.h"
#include "logs/LogTree.h"

#include <algorithm>
#include <atomic>
#include <iterator>
#include <map>
#include <mutex>
#include <new>
#include <numeric>
#include <string_view>
#include <system_error>
#include <thread>
#include <unordered_set>
#include <utility>

namespace burnwick {

namespace {

/// The file's name without its extension.
std::string_view sessionOf(std::string_view file) {
    const std::string_view name = file.substr(file.rfind('/') + 1);
    const std::size_t dot = name.rfind('.');
    return dot == 0 ? name : name.substr(0, dot);
}

/// The file's entries; none when there is not enough memory for them.
std::vector<JSONLEntry> readFile(LogFileReader &reader, const std::string &file, bool assignSessionId,
                                 const std::stop_token &stop) {
    try {
        std::vector<JSONLEntry> entries = reader.readFile(file, stop);
        if (assignSessionId && !entries.empty()) {
            const InternedString session(sessionOf(file));
            for (JSONLEntry &entry : entries)
                entry.setSessionId(session);
        }
        return entries;
    } catch (const std::bad_alloc &) {
        return {};
    }
}

/// Puts the files' entries together in file order, whatever the order in which they are done. A file for
/// which memory is short, and one that is never added, has none.
class OrderedMerge {
public:
    explicit OrderedMerge(std::size_t firstRecentFile)
        : m_firstRecentFile(firstRecentFile) {}

    void add(std::size_t file, std::vector<JSONLEntry> entries) {
        const std::lock_guard lock(m_mutex);
        m_waiting.emplace(file, std::move(entries));
        while (!m_waiting.empty() && m_waiting.begin()->first == m_nextFile)
            mergeFirst();
    }
    /// Once every file has been added; before the other two.
    void finish() {
        while (!m_waiting.empty())
            mergeFirst();
    }
    [[nodiscard]] std::size_t firstRecent() const { return m_firstRecent.value_or(m_merged.size()); }
    [[nodiscard]] std::vector<JSONLEntry> takeEntries() { return std::move(m_merged); }

private:
    void mergeFirst() {
        const auto first = m_waiting.begin();
        m_nextFile = first->first + 1;
        if (!m_firstRecent && first->first >= m_firstRecentFile)
            m_firstRecent = m_merged.size();
        try {
            if (m_merged.empty())
                m_merged = std::move(first->second);
            else
                m_merged.insert(m_merged.end(), first->second.begin(), first->second.end());
        } catch (const std::bad_alloc &) {
            // As with any other file that cannot be read.
        }
        m_waiting.erase(first);
    }

    std::mutex m_mutex;
    std::size_t m_firstRecentFile;
    std::optional<std::size_t> m_firstRecent;
    std::size_t m_nextFile = 0;
    std::map<std::size_t, std::vector<JSONLEntry>> m_waiting;
    std::vector<JSONLEntry> m_merged;
};

/// How many of the files, which are sorted by time, are older.
std::size_t countModifiedBefore(std::span<const LogFile> files, Instant instant) {
    const auto first = std::partition_point(files.begin(), files.end(), [instant](const LogFile &file) {
        return !file.modified || *file.modified < instant;
    });
    return static_cast<std::size_t>(first - files.begin());
}

/// Starting a thread costs about as much as reading this much.
constexpr std::uint64_t bytesWorthAThread = 1U << 20U;

} // namespace

JSONLParser::JSONLParser(const std::filesystem::path &home, const Calendar &calendar, const Clock &clock,
                         unsigned threads)
    : m_projectsURL(home / ".claude" / "projects")
    , m_calendar(calendar)
    , m_clock(clock)
    , m_threads(threads != 0 ? threads : std::max(1U, std::thread::hardware_concurrency())) {}

std::vector<LogFile> JSONLParser::allLogFiles(const std::stop_token &stop) const {
    return walkLogTree(m_projectsURL.native(), std::nullopt, stop);
}

Instant JSONLParser::recentSince() const {
    return m_calendar.daysBefore(m_clock.now(), 1);
}

std::vector<LogFile> JSONLParser::recentLogFiles(const std::stop_token &stop) const {
    return walkLogTree(m_projectsURL.native(), recentSince(), stop);
}

std::vector<JSONLEntry> JSONLParser::parseFile(const std::filesystem::path &file,
                                               bool assignSessionId) const {
    LogFileReader reader(LineSelection::all);
    return readFile(reader, file.native(), assignSessionId, {});
}

LogHistory JSONLParser::parseFiles(std::span<const LogFile> files, std::size_t firstRecentFile,
                                   bool assignSessionId, const std::stop_token &stop) const {
    OrderedMerge merge(firstRecentFile);
    std::atomic<std::size_t> nextFile = 0;
    const auto work = [&] {
        try {
            LogFileReader reader(LineSelection::usageOnly);
            for (std::size_t i = nextFile++; i < files.size() && !stop.stop_requested(); i = nextFile++) {
                const LogFile &file = files[i];
                merge.add(i, file.regular ? readFile(reader, file.path, assignSessionId, stop)
                                          : std::vector<JSONLEntry>());
            }
        } catch (const std::bad_alloc &) {
            // Not even for the little that is needed besides a file's entries; others may go on.
        }
    };
    const std::uint64_t bytes =
        std::accumulate(files.begin(), files.end(), std::uint64_t{0},
                        [](std::uint64_t sum, const LogFile &file) { return sum + file.size; });
    const std::uint64_t workers =
        std::min({std::uint64_t{m_threads}, std::uint64_t{files.size()}, 1 + bytes / bytesWorthAThread});
    {
        std::vector<std::jthread> helpers;
        try {
            for (std::uint64_t i = 1; i < workers; ++i)
                helpers.emplace_back(work);
        } catch (const std::system_error &) {
            // No more threads are to be had; those that run, and this one, do it all.
        }
        work();
    }
    merge.finish();
    LogHistory history;
    history.fileCount = static_cast<std::int64_t>(files.size());
    history.firstRecent = merge.firstRecent();
    history.entries = merge.takeEntries();
    return history;
}

std::vector<JSONLEntry> JSONLParser::parseRecentEntries() const {
    return parseFiles(recentLogFiles(), 0, false, {}).entries;
}

LogHistory JSONLParser::parseAllEntries(const std::stop_token &stop) const {
    const std::vector<LogFile> files = allLogFiles(stop);
    const Instant since = recentSince();
    const std::size_t settled = countModifiedBefore(files, since);
    LogHistory history = parseFiles(files, settled, true, stop);
    history.settled = {since, static_cast<std::int64_t>(settled)};
    return history;
}

std::optional<LogHistory> JSONLParser::parseUnsettledEntries(const SettledLogs &settled,
                                                             const std::stop_token &stop) const {
    const std::vector<LogFile> files = allLogFiles(stop);
    const std::size_t first = countModifiedBefore(files, settled.before);
    if (static_cast<std::int64_t>(first) != settled.fileCount)
        return std::nullopt;
    LogHistory unsettled = parseFiles(std::span(files).subspan(first), 0, true, stop);
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
        const auto instant = entry.timestamp().instant();
        if (!instant)
            continue;
        if (!first)
            first = instant;
        last = instant;
        const JSONLEntry::Counts counts = entry.counts();
        tokens = addTokens(tokens, addTokens(counts.input, counts.output));
    }
    // One dated entry has no span either.
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
        const auto instant = entry.timestamp().instant();
        if (!instant || *instant < *cutOff)
            continue;
        builder.add(entry);
        if (!entry.sessionId().view().empty())
            sessions.insert(entry.sessionId());
    }
    return builder.finish(static_cast<std::int64_t>(sessions.size()), m_calendar.dayOf(now));
}

} // namespace burnwick
