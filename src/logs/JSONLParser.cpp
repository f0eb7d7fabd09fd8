// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLParser.h"

#include "logs/HistoryBuilder.h"
#include "logs/HistorySums.h"
#include "logs/LogFileReader.h"

#include <algorithm>
#include <thread>
#include <unordered_map>

namespace burnwick {

namespace fs = std::filesystem;

namespace {

/// Sets entries and positions of the files that the other history has, too.
void shareEntries(LogHistory &history, const LogHistory &last) {
    std::unordered_map<std::string_view, std::size_t> indexes;
    for (std::size_t i = 0; i < last.files.size(); ++i)
        indexes.emplace(last.files[i].path.native(), i);
    for (std::size_t i = 0; i < history.files.size(); ++i) {
        if (const auto found = indexes.find(history.files[i].path.native()); found != indexes.end()) {
            history.entries[i] = last.entries[found->second];
            history.positions[i] = last.positions[found->second];
        }
    }
}

/// Sets those entries that are null and that the store knows.
void recallEntries(LogHistory &history, Watch watch, ReadingStore &store) {
    std::vector<const void *> known;
    for (const LogEntries &entries : history.entries)
        known.push_back(entries.get());
    store.recall(history);
    if (watch == Watch::none)
        return;
    for (std::size_t i = 0; i < known.size(); ++i) {
        // Nobody watched this file since it was stored.
        if (history.entries[i].get() != known[i] &&
            !isUnchanged(history.positions[i], history.files[i].status))
            history.entries[i] = nullptr;
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

JSONLParser::JSONLParser(const fs::path &home, unsigned threads)
    : JSONLParser(std::vector{home / ".claude" / "projects"}, threads) {}

JSONLParser::JSONLParser(std::vector<fs::path> folders, unsigned threads)
    : m_folders(std::move(folders))
    , m_threads(threads != 0 ? threads : std::max(1U, std::thread::hardware_concurrency())) {}

std::shared_ptr<LogHistory> JSONLParser::historyOf(std::vector<LogFile> files) const {
    auto history = std::make_shared<LogHistory>();
    history->folders = m_folders;
    history->files = std::move(files);
    history->entries.resize(history->files.size());
    history->positions.resize(history->files.size());
    return history;
}

std::shared_ptr<const LogHistory> JSONLParser::parseRecentEntries(Instant since, ReadingStore *store) const {
    auto history = historyOf(recentLogFiles(m_folders, since));
    if (store != nullptr)
        store->recall(*history);
    readMissingEntries(*history, m_threads, Watch::none, nullptr, {});
    return history;
}

std::shared_ptr<const LogHistory> JSONLParser::parseAllEntries(const LogHistory *last, ReadingStore *store,
                                                               const StopRequest &stop) const {
    // Listed first: a file that changes before it is read differs in the next comparison.
    auto history = historyOf(allLogFiles(m_folders, stop));
    if (last != nullptr)
        shareEntries(*history, *last);
    return readChanges(std::move(history), last, Watch::none, store, stop);
}

std::shared_ptr<const LogHistory> JSONLParser::parseChangedEntries(const LogHistory &last,
                                                                   const std::set<fs::path> &changed,
                                                                   ReadingStore *store,
                                                                   const StopRequest &stop) const {
    std::vector<LogFile> files;
    std::set<fs::path> unknown = changed;
    for (const LogFile &file : last.files) {
        if (changed.contains(file.path))
            unknown.erase(file.path);
        else
            files.push_back(file);
    }
    for (const fs::path &path : changed) {
        const auto file = logFileAt(path);
        // A folder that is mounted in another one reports its files under its own name.
        if (file && unknown.contains(path) && std::ranges::any_of(files, [&file](const LogFile &known) {
                return known.status.inode == file->status.inode && known.status.device == file->status.device;
            }))
            return parseAllEntries(&last, store, stop);
        if (file)
            files.insert(std::ranges::upper_bound(files, *file, isBefore), *file);
    }
    auto history = historyOf(std::move(files));
    shareEntries(*history, last);
    return readChanges(std::move(history), &last, Watch::continuous, store, stop);
}

std::shared_ptr<const LogHistory> JSONLParser::readChanges(std::shared_ptr<LogHistory> history,
                                                           const LogHistory *last, Watch watch,
                                                           ReadingStore *store,
                                                           const StopRequest &stop) const {
    std::optional<std::vector<LogEntries>> kept;
    for (int repetitions = 1; !kept && repetitions >= 0 && !stop.isMade(); --repetitions) {
        if (store != nullptr)
            recallEntries(*history, watch, *store);
        readMissingEntries(*history, m_threads, watch, store, stop);
        if (store == nullptr)
            break;
        kept = store->finish(stop.isMade() ? nullptr : history.get());
    }
    if (kept || last != nullptr)
        history->kept = kept ? std::move(*kept) : last->kept;
    const bool isEqual = last != nullptr && history->entries == last->entries &&
                         history->positions == last->positions && history->kept == last->kept;
    return stop.isMade() || isEqual ? nullptr : history;
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
    return HistorySums(history, calendar).within(filter, now);
}

} // namespace burnwick
