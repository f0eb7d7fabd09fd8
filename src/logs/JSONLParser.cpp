// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLParser.h"

#include "logs/HistoryBuilder.h"
#include "logs/LogFileReader.h"

#include <algorithm>
#include <thread>
#include <unordered_set>

namespace burnwick {

namespace {

/// Sets the entries of the files that are the same in the other history, which is sorted alike.
void shareEntries(LogHistory &history, const LogHistory &last) {
    for (std::size_t i = 0; i < history.files.size(); ++i) {
        const LogFile &file = history.files[i];
        const auto found = std::ranges::lower_bound(last.files, file, isBefore);
        if (found != last.files.end() && !isBefore(file, *found) && found->size == file.size)
            history.entries[i] = last.entries[static_cast<std::size_t>(found - last.files.begin())];
    }
}

template <typename Use> // called with each entry
void forEachEntry(std::span<const LogEntries> lists, Use use) {
    for (const LogEntries &list : lists) {
        if (list != nullptr)
            std::ranges::for_each(*list, use);
    }
}

} // namespace

JSONLParser::JSONLParser(const std::filesystem::path &home, unsigned threads)
    : m_projectsURL(home / ".claude" / "projects")
    , m_threads(threads != 0 ? threads : std::max(1U, std::thread::hardware_concurrency())) {}

std::shared_ptr<const LogHistory> JSONLParser::parseRecentEntries(Instant since) const {
    auto history = std::make_shared<LogHistory>();
    history->files = recentLogFiles(m_projectsURL, since);
    history->entries.resize(history->files.size());
    readMissingEntries(*history, m_threads, {});
    return history;
}

std::shared_ptr<const LogHistory> JSONLParser::parseAllEntries(const LogHistory *last,
                                                               const StopRequest &stop) const {
    auto history = std::make_shared<LogHistory>();
    // Listed first: a file that changes before it is read differs in the next comparison.
    history->files = allLogFiles(m_projectsURL, stop);
    history->entries.resize(history->files.size());
    if (last != nullptr)
        shareEntries(*history, *last);
    readMissingEntries(*history, m_threads, stop);
    if (stop.isMade() || (last != nullptr && history->entries == last->entries))
        return nullptr;
    return history;
}

SessionTokens JSONLParser::calculateSessionTokens(std::span<const LogEntries> entries) {
    SessionTokens sums;
    forEachEntry(entries, [&](const JSONLEntry &entry) { addCounts(sums, entry.counts()); });
    return sums;
}

double JSONLParser::calculateBurnRate(std::span<const LogEntries> entries) {
    std::optional<Instant> first;
    std::optional<Instant> last;
    std::int64_t tokens = 0;
    forEachEntry(entries, [&](const JSONLEntry &entry) {
        if (!entry.timestamp())
            return;
        last = entry.timestamp();
        first = first ? first : last;
        tokens = addTokens(tokens, addTokens(entry.counts().input, entry.counts().output));
    });
    // A single dated entry has no span either.
    if (!first || *last <= *first)
        return 0;
    constexpr double nanosecondsPerMinute = 60e9;
    const double minutes = static_cast<double>(nanosecondsBetween(*first, *last)) / nanosecondsPerMinute;
    return static_cast<double>(tokens) / minutes;
}

HistoricalData JSONLParser::computeHistoricalData(const LogHistory &history, TimeFilter filter,
                                                  const Calendar &calendar, Instant now) {
    const auto cutOff = cutOffOf(filter, now, calendar);
    HistoryBuilder builder(calendar);
    std::unordered_set<InternedString> sessions;
    forEachEntry(history.entries, [&](const JSONLEntry &entry) {
        if (cutOff) {
            const auto instant = entry.timestamp();
            if (!instant || *instant < *cutOff)
                return;
            sessions.insert(entry.sessionId());
        }
        builder.add(entry);
    });
    const std::size_t sessionCount = cutOff ? sessions.size() : history.files.size();
    return builder.finish(static_cast<std::int64_t>(sessionCount), calendar.dayOf(now));
}

} // namespace burnwick
