// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/FileTable.h"
#include "ledger/KeptTable.h"
#include "ledger/LedgerFile.h"
#include "ledger/LimitTable.h"
#include "logs/ReadingStore.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace burnwick {

/// An open ledger. After settle() each line that was read and not forgotten is in its tables exactly once:
/// in those of its log while that exists, and then in that of kept lines. All operations throw
/// SQLite::Exception and DamagedLedger; the object is of no use afterwards. Destroying it undoes an open
/// transaction. For one thread at a time.
class LedgerDatabase final {
public:
    /// See LedgerFile.
    explicit LedgerDatabase(const std::filesystem::path &file, Patience patience = Patience::usual);

    /// Begins a series of operations; see Patience.
    void beginSeries() { m_file.beginSeries(); }

    /// Begin a transaction, which sees one state of the file. With beginWriting() others learn that lines may
    /// have changed.
    void beginReading() { m_file.database().exec("BEGIN"); }
    void beginWriting();
    void commit() { m_file.database().exec("COMMIT"); }

    [[nodiscard]] FileTable &files() { return m_files; }
    /// Reads the kept lines again if another process may have written lines, with or without the messages of
    /// their lists. Needs an open transaction.
    void followOthers(bool withMessages = true);

    /// See ReadingStore::keep(). Needs an open transaction.
    [[nodiscard]] bool keep(const std::filesystem::path &file, const ReadingPosition *continued,
                            const FileReading &reading);

    // Each of these is a transaction, or several ones.

    /// Forgets files that are not in the history, and keeps their lines that no other log has.
    void settle(const LogHistory &history);
    /// Returns the kept lines; a session's list is the same object until its lines change.
    [[nodiscard]] std::vector<LogEntries> kept();
    /// Makes the ledger keep the lines of deleted logs. Does nothing if it already keeps them.
    void beginKeeping();
    /// Calls the function, removes the kept lines for good, and keeps no further lines. Returns false, and
    /// changes nothing, if there are kept lines and `withLines` is false.
    bool endKeeping(bool withLines, const std::function<void()> &removeCopies);
    /// Returns whether followOthers() has found since the last call that another process may have written
    /// lines.
    [[nodiscard]] bool hasFollowed() { return std::exchange(m_hasFollowed, false); }
    /// See Ledger.
    void exportLines(const std::function<void(const SessionLines &)> &use);
    std::size_t importLines(const std::vector<SessionLines> &sessions);
    [[nodiscard]] std::vector<std::vector<LimitSample>> recordLimits(std::span<const Limit> limits);
    [[nodiscard]] std::vector<Limit> lastLimits(Instant now);
    /// Calls check() and copies all tables to the file, which must exist and be empty.
    void copyTo(const std::filesystem::path &file);
    /// Reads all rows; throws on damage.
    void check();

private:
    /// The paths of a session's logs.
    using Paths = std::unordered_multimap<std::string_view, const std::filesystem::path *>;

    static Paths pathsOf(const std::vector<FileTable::Place> &files);
    bool settle(const LogHistory &history, bool mayWrite);
    std::size_t keepLines(SessionLines lines);
    void replaceKept(const SessionLines &lines);
    void removeExisting(SessionLines &lines, const Paths &paths);
    void forEachLine(const std::function<void(const SessionLines &)> &use);

    LedgerFile m_file;
    FileTable m_files;
    KeptTable m_keptLines;
    LimitTable m_limits;
    bool m_isKeeping;                                      ///< as the table has it
    bool m_hasFollowed = false;                            ///< since the last call
    std::map<std::string, LogEntries, std::less<>> m_kept; ///< by session, as the table has them
    std::optional<std::int64_t> m_version;                 ///< of the file when both were read
    std::int64_t m_edition = 0;                            ///< the table's number then, and own transactions
    std::set<std::string> m_unsettled;                     ///< sessions whose kept lines a log may have
};

} // namespace burnwick
