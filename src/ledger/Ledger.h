// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/LedgerFolder.h"
#include "ledger/SessionLines.h"
#include "logs/ReadingStore.h"
#include "model/Limit.h"

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <vector>

namespace burnwick {

class LedgerDatabase;

/// The readings of this and earlier runs, the usage lines of deleted logs, and samples of limits, in a SQLite
/// file. Several processes may use it at once. A damaged file is moved aside and replaced by the backup, or
/// else by a new file; after any other failure the file is not used until the next series of calls. The
/// process logs each kind of failure once. A series waits at most a fifth of a second for others. With brief
/// patience it waits at most 20 ms, and a damaged or missing file with a backup is left to others.
class Ledger final : public ReadingStore {
public:
    /// Touches nothing until the first call. The folder is made for the user alone if it is missing.
    explicit Ledger(const std::filesystem::path &folder, Patience patience = Patience::usual);
    ~Ledger() override;

    /// Returns the ledger's folder in the user's data folder.
    [[nodiscard]] static std::filesystem::path userFolder();

    /// Makes recall() leave out the messages of lists from then on: figures as they are logged do not need
    /// them.
    void omitMessages() noexcept { m_withMessages = false; }

    void recall(LogHistory &history) override;
    [[nodiscard]] bool keep(const std::filesystem::path &file, const ReadingPosition *continued,
                            const FileReading &reading) override;
    std::optional<std::vector<LogEntries>> finish(const LogHistory *history) override;

    // These are safe from any thread.

    /// Sets whether the usage lines of deleted logs count; false at first. With true, the next series makes
    /// the ledger keep them from then on, with a daily backup; only forgetKeptHistory() ends that.
    void setKeepsHistory(bool on);
    /// Removes all kept usage lines and the backups for good, and keeps no further lines. Returns false, with
    /// all lines left, on failure, or if there are kept lines and `withLines` is false.
    [[nodiscard]] bool forgetKeptHistory(bool withLines);
    /// Calls the function with all usage lines, those of existing logs and kept ones; a session may come
    /// several times. Returns false if that or the last series failed; lines may be missing then.
    [[nodiscard]] bool exportLines(const std::function<void(const SessionLines &)> &use);
    /// Keeps the lines that the ledger does not have yet, makes a backup, and returns the number of added
    /// lines. Null, with no line added, if the import or the last series failed.
    [[nodiscard]] std::optional<std::size_t> importLines(const std::vector<SessionLines> &sessions);

    /// Stores those of the first 32 limits that were observed in their window: one sample for each change of
    /// the percent and for each quarter of an hour. Returns for each limit the stored samples of its window
    /// before the observation and that itself, in order; for other limits the observation alone. Null on
    /// failure.
    [[nodiscard]] std::optional<std::vector<std::vector<LimitSample>>>
    recordLimits(std::span<const Limit> limits);
    /// Returns the last observation until `now` of each limit whose window resets later, by kind and model.
    /// It may be a minute older than the last recorded one, if the percent is the same. Empty on failure.
    [[nodiscard]] std::vector<Limit> lastLimits(Instant now);

private:
    template <typename Work>
    bool attempt(Work work);
    template <typename Work>
    bool attemptAside(Work work);
    template <typename Work>
    bool attemptOnce(Work work);
    void beginSeries();
    void open();
    void commit();
    void close();
    void backUp(void (LedgerFolder::*function)(LedgerDatabase &));
    void abandon(const std::exception &error);
    void complain(const std::string &outcome, const std::exception &error);

    LedgerFolder m_folder;
    const Patience m_patience;
    std::mutex m_mutex;
    std::unique_ptr<LedgerDatabase> m_database; ///< null before the first use and after a failure
    std::size_t m_filesInTransaction = 0;       ///< 0 if none is open
    bool m_hasFailed = false;                   ///< in this series, or it is idle
    bool m_wasDoubted = false;                  ///< whether it was checked for damage in this series
    bool m_wasMoved = false;                    ///< in this series
    bool m_mayLackFiles = true;                 ///< whether readings of this run may be missing in it
    bool m_isIdle = false;                      ///< in this series: there are neither logs nor a ledger
    bool m_isCurrent = false;                   ///< whether the last series reached its end
    bool m_keepsHistory = false;
    bool m_withMessages = true;
    std::vector<LogEntries> m_kept;     ///< as they were last read
    std::set<std::string> m_complaints; ///< those in the log
};

} // namespace burnwick
