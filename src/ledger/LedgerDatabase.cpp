// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerDatabase.h"

#include <SQLiteCpp/Backup.h>

#include <algorithm>
#include <unordered_set>
#include <utility>

#include <sqlite3.h>

namespace burnwick {

namespace {

LogEntries entriesOf(const SessionLines &lines, bool withMessages = true) {
    auto entries = std::make_shared<EntryList>(lines.entries.begin(), lines.entries.end());
    if (withMessages)
        entries->messages.add(lines.entries, lines.details);
    return entries;
}

/// Another program may read other folders, whose logs this one cannot judge.
bool isBelow(const std::filesystem::path &file, const std::vector<std::filesystem::path> &folders) {
    return std::ranges::any_of(folders, [&file](const std::filesystem::path &folder) {
        const std::string_view path = file.native();
        const std::string_view top = folder.native();
        return path.starts_with(top) && path.size() > top.size() && path[top.size()] == '/';
    });
}

std::string_view sessionOf(const std::filesystem::path &file) {
    std::string_view name = file.native();
    name.remove_prefix(name.rfind('/') + 1);
    return name.substr(0, name.rfind('.'));
}

} // namespace

LedgerDatabase::LedgerDatabase(const std::filesystem::path &file, Patience patience)
    : m_file(file, patience)
    , m_files(m_file.database())
    , m_keptLines(m_file.database())
    , m_limits(m_file.database())
    , m_isKeeping(m_keptLines.isKeeping()) {}

void LedgerDatabase::beginWriting() {
    m_file.database().exec("BEGIN IMMEDIATE");
    if (m_file.database().exec("UPDATE edition SET number = number + 1") != 1)
        throw DamagedLedger("a row is missing");
    ++m_edition;
}

bool LedgerDatabase::keep(const std::filesystem::path &file, const ReadingPosition *continued,
                          const FileReading &reading) {
    if (continued != nullptr && !m_files.isAt(file, *continued))
        return false;
    if (continued == nullptr && m_files.contains(file)) {
        if (m_isKeeping) {
            SessionLines former = m_files.linesOf(file);
            former.remove(*reading.entries, reading.newDetails);
            keepLines(std::move(former));
        }
        m_files.forget(file);
    }
    m_files.keep(file, continued, reading);
    if (m_isKeeping)
        m_unsettled.emplace(sessionOf(file));
    return true;
}

void LedgerDatabase::settle(const LogHistory &history) {
    for (const bool mayWrite : {false, true}) {
        mayWrite ? beginWriting() : beginReading();
        const bool isSettled = settle(history, mayWrite);
        commit();
        if (isSettled)
            return;
    }
}

/// Returns false, and changes nothing, if it would have to write and `mayWrite` is false.
bool LedgerDatabase::settle(const LogHistory &history, bool mayWrite) {
    followOthers();
    std::unordered_set<std::string_view> paths;
    for (const LogFile &file : history.files)
        paths.insert(file.path.native());
    std::vector<FileTable::Place> existing;
    std::vector<FileTable::Place> gone;
    for (FileTable::Place &file : m_files.files()) {
        if (paths.contains(file.path.native()))
            existing.push_back(std::move(file));
        else if (isBelow(file.path, history.folders))
            gone.push_back(std::move(file));
    }

    std::erase_if(m_unsettled, [this](const std::string &session) { return !m_kept.contains(session); });
    const Paths pathsOfSessions = !m_unsettled.empty() || !gone.empty() ? pathsOf(existing) : Paths();
    std::erase_if(m_unsettled, [&pathsOfSessions](const std::string &session) {
        return !pathsOfSessions.contains(session);
    });
    if (!mayWrite && (!gone.empty() || !m_unsettled.empty()))
        return false;

    std::unordered_map<std::uint64_t, const FileTable::Place *> inodes;
    for (const FileTable::Place &file : gone.empty() ? gone : existing)
        inodes.emplace(file.inode, &file);
    for (const FileTable::Place &file : gone) {
        if (m_isKeeping) {
            SessionLines lines = m_files.linesOf(file.path);
            // A file that was renamed.
            if (const auto other = inodes.find(file.inode); other != inodes.end())
                lines.remove(m_files.linesOf(other->second->path));
            keepLines(std::move(lines));
            m_unsettled.emplace(sessionOf(file.path));
        }
        m_files.forget(file.path);
    }
    for (const std::string &session : std::exchange(m_unsettled, {})) {
        SessionLines lines = m_keptLines.linesOf(InternedString(session));
        const std::size_t size = lines.entries.size();
        removeExisting(lines, pathsOfSessions);
        if (lines.entries.size() < size)
            replaceKept(lines);
    }
    return true;
}

std::vector<LogEntries> LedgerDatabase::kept() {
    beginReading();
    followOthers();
    commit();
    std::vector<LogEntries> lists;
    for (const auto &[session, entries] : m_kept)
        lists.push_back(entries);
    return lists;
}

void LedgerDatabase::followOthers(bool withMessages) {
    const std::int64_t version = m_file.database().execAndGet("PRAGMA data_version").getInt64();
    if (m_version == version)
        return;
    const std::int64_t edition =
        m_file.database().execAndGet("SELECT coalesce(max(number), 0) FROM edition").getInt64();
    const bool isFirst = !std::exchange(m_version, version);
    if (std::exchange(m_edition, edition) == edition && !isFirst)
        return;
    m_hasFollowed |= !isFirst;
    m_isKeeping = m_keptLines.isKeeping();
    std::map<std::string, LogEntries, std::less<>> kept;
    for (const std::string &session : m_keptLines.sessions()) {
        auto entries = entriesOf(m_keptLines.linesOf(InternedString(session)), withMessages);
        const auto known = m_kept.find(session);
        kept[session] = known != m_kept.end() && *known->second == *entries ? known->second : entries;
        m_unsettled.insert(session);
    }
    m_kept = std::move(kept);
}

/// Adds those of the lines that are not kept yet, and returns their number.
std::size_t LedgerDatabase::keepLines(SessionLines lines) {
    SessionLines kept = m_keptLines.linesOf(lines.session);
    lines.remove(kept);
    if (!lines.entries.empty()) {
        kept.add(lines);
        replaceKept(kept);
    }
    return lines.entries.size();
}

void LedgerDatabase::replaceKept(const SessionLines &lines) {
    m_keptLines.replace(lines);
    if (lines.entries.empty())
        m_kept.erase(std::string(lines.session.view()));
    else
        m_kept[std::string(lines.session.view())] = entriesOf(lines);
}

LedgerDatabase::Paths LedgerDatabase::pathsOf(const std::vector<FileTable::Place> &files) {
    Paths paths;
    for (const FileTable::Place &file : files)
        paths.emplace(sessionOf(file.path), &file.path);
    return paths;
}

/// Removes those lines that logs of the session have.
void LedgerDatabase::removeExisting(SessionLines &lines, const Paths &paths) {
    const auto [begin, end] = paths.equal_range(lines.session.view());
    for (auto path = begin; path != end; ++path)
        lines.remove(m_files.linesOf(*path->second));
}

void LedgerDatabase::beginKeeping() {
    beginReading();
    followOthers();
    commit();
    if (m_isKeeping)
        return;
    beginWriting();
    m_keptLines.begin();
    commit();
    m_isKeeping = true;
}

bool LedgerDatabase::endKeeping(bool withLines, const std::function<void()> &removeCopies) {
    beginWriting();
    followOthers();
    const bool mayEnd = withLines || m_kept.empty();
    if (mayEnd) {
        removeCopies(); // first: a backup that is left after a crash could be restored later
        m_keptLines.end();
        m_kept.clear();
        m_isKeeping = false;
    }
    commit();
    // The file "-wal" may still contain what was removed.
    m_file.database().tryExec("PRAGMA wal_checkpoint(TRUNCATE)");
    return mayEnd;
}

void LedgerDatabase::forEachLine(const std::function<void(const SessionLines &)> &use) {
    for (const FileTable::Place &file : m_files.files())
        use(m_files.linesOf(file.path));
    for (const std::string &session : m_keptLines.sessions())
        use(m_keptLines.linesOf(InternedString(session)));
}

void LedgerDatabase::exportLines(const std::function<void(const SessionLines &)> &use) {
    beginReading();
    forEachLine(use);
    commit();
}

std::size_t LedgerDatabase::importLines(const std::vector<SessionLines> &sessions) {
    std::size_t count = 0;
    beginWriting();
    const auto files = m_files.files();
    const Paths paths = pathsOf(files);
    for (SessionLines lines : sessions) {
        removeExisting(lines, paths);
        count += keepLines(std::move(lines));
    }
    commit();
    return count;
}

std::vector<std::vector<LimitSample>> LedgerDatabase::recordLimits(std::span<const Limit> limits) {
    std::vector<std::vector<LimitSample>> samples;
    bool isRecorded = false;
    for (const bool mayWrite : {false, true}) {
        m_file.database().exec(mayWrite ? "BEGIN IMMEDIATE" : "BEGIN");
        isRecorded = true;
        samples.clear();
        for (const Limit &limit : limits)
            isRecorded &= m_limits.record(limit, mayWrite, samples.emplace_back());
        commit();
        if (isRecorded)
            break;
    }
    return samples;
}

std::vector<Limit> LedgerDatabase::lastLimits(Instant now) {
    beginReading();
    std::vector<Limit> limits = m_limits.lastLimits(now);
    commit();
    return limits;
}

void LedgerDatabase::copyTo(const std::filesystem::path &file) {
    beginReading();
    check();
    // The file is the caller's, who deletes it if this does not end.
    SQLite::Database copy(file.string(), SQLite::OPEN_READWRITE, 0, "unix-none");
    copy.exec("PRAGMA journal_mode = OFF");
    copy.exec("PRAGMA synchronous = OFF");
    if (SQLite::Backup(copy, m_file.database()).executeStep() != SQLITE_DONE)
        throw SQLite::Exception("the copy is not complete", SQLITE_BUSY);
    commit();
}

void LedgerDatabase::check() {
    if (m_file.database().execAndGet("PRAGMA quick_check(1)").getText() != std::string_view("ok"))
        throw DamagedLedger("its tables are malformed");
    forEachLine([](const SessionLines &) {});
    m_limits.check();
}

} // namespace burnwick
