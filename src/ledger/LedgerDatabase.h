// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/FileTable.h"
#include "ledger/KeptTable.h"
#include "ledger/LedgerFile.h"
#include "logs/ReadingStore.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace burnwick {

/// An open ledger. After settle() each line that was read and not forgotten is in its tables exactly once:
/// with its log while that exists, and then with the kept lines. All operations throw SQLite::Exception and
/// DamagedLedger; the object is of no use afterwards. Destroying it undoes an open transaction. For one
/// thread at a time.
class LedgerDatabase final {
public:
    /// See LedgerFile.
    explicit LedgerDatabase(const std::filesystem::path &file);

    /// Begins a series of operations, which wait at most a fifth of a second altogether for other processes.
    void beginSeries() { m_file.beginSeries(); }

    /// Begin a transaction, which sees one state of the file.
    void beginReading() { m_file.database().exec("BEGIN"); }
    void beginWriting() { m_file.database().exec("BEGIN IMMEDIATE"); }
    void commit() { m_file.database().exec("COMMIT"); }

    [[nodiscard]] FileTable &files() { return m_files; }
    /// Reads anew what another process may have altered. Needs an open transaction.
    void followOthers();

    /// See ReadingStore::keep(). Needs an open transaction.
    [[nodiscard]] bool keep(const std::filesystem::path &file, const ReadingPosition *continued,
                            const FileReading &reading);

    // These need that no transaction is open.

    /// Forgets files that are not in the history, and keeps their lines that no other log has.
    void settle(const LogHistory &history);
    /// Returns the kept lines, each list the same as at the last time if nothing changed.
    [[nodiscard]] std::vector<LogEntries> kept();
    /// Begins to keep lines of logs that are gone; does nothing if the ledger already does.
    void beginKeeping();
    /// Ends it and removes the kept lines for good, after the call of the function. Does nothing and returns
    /// false if there are lines that must stay.
    bool endKeeping(bool withLines, const std::function<void()> &removeCopies);
    /// Whether another process has written since the last call.
    [[nodiscard]] bool hasFollowed() { return std::exchange(m_hasFollowed, false); }
    /// See Ledger.
    void exportLines(const std::function<void(const SessionLines &)> &use);
    std::size_t importLines(const std::vector<SessionLines> &sessions);
    /// Writes a copy of all tables to the file, which must be empty, after a check.
    void copyTo(const std::filesystem::path &file);
    /// Reads each row.
    void check();

private:
    /// The paths of a session's logs.
    using Paths = std::unordered_multimap<std::string_view, const std::filesystem::path *>;

    static Paths pathsOf(const std::vector<FileTable::Place> &files);
    bool settle(const LogHistory &history, bool mayWrite);
    void keepLines(SessionLines lines);
    void replaceKept(const SessionLines &lines);
    void removeExisting(SessionLines &lines, const Paths &paths);
    void forEachLine(const std::function<void(const SessionLines &)> &use);

    LedgerFile m_file;
    FileTable m_files;
    KeptTable m_keptLines;
    bool m_isKeeping;                                      ///< as the table has it
    bool m_hasFollowed = false;                            ///< since the last call
    std::map<std::string, LogEntries, std::less<>> m_kept; ///< by session, as the table has them
    std::optional<std::int64_t> m_version;                 ///< of the file when both were read
    std::set<std::string> m_unsettled;                     ///< sessions whose kept lines a log may have
};

} // namespace burnwick
