// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/LedgerFolder.h"
#include "ledger/SessionLines.h"
#include "logs/ReadingStore.h"

#include <exception>
#include <filesystem>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <set>
#include <string>
#include <vector>

namespace burnwick {

class LedgerDatabase;

/// The readings of this and earlier runs, and the usage lines of logs that are gone, in a SQLite file.
/// Several processes may use it at once. A damaged file is moved aside, and the backup or a new file takes
/// its place; each other failure leaves it alone until the next series of calls. Each kind of failure is
/// logged once. A series waits at most a fifth of a second for others.
class Ledger final : public ReadingStore {
public:
    /// Touches nothing until the first call. The folder is made for the user alone if it is missing.
    explicit Ledger(const std::filesystem::path &folder);
    ~Ledger() override;

    /// Returns the ledger's folder in the user's data folder.
    [[nodiscard]] static std::filesystem::path userFolder();

    void recall(LogHistory &history) override;
    [[nodiscard]] bool keep(const std::filesystem::path &file, const ReadingPosition *continued,
                            const FileReading &reading) override;
    std::optional<std::vector<LogEntries>> finish(const LogHistory *history) override;

    // These are safe from any thread.

    /// Sets whether the usage lines of logs that are gone are counted; false at first. The first series with
    /// it begins to keep them, and keeps a daily backup. Setting it to false ends neither.
    void setKeepsHistory(bool on);
    /// Ends the keeping, and removes all kept usage lines and the backups for good. Returns false if it
    /// cannot, or if there are kept lines and `withLines` is false; then nothing is removed.
    [[nodiscard]] bool forgetKeptHistory(bool withLines);
    /// Calls the function with all usage lines, those of existing logs and kept ones; a session may come
    /// several times. Returns false if that or the last series failed; lines may be missing then.
    [[nodiscard]] bool exportLines(const std::function<void(const SessionLines &)> &use);
    /// Keeps those of the lines that are not known yet, all or none of them, makes a backup, and returns
    /// their number. Null if that or the last series failed.
    [[nodiscard]] std::optional<std::size_t> importLines(const std::vector<SessionLines> &sessions);

private:
    template <typename Work>
    bool attempt(Work work);
    template <typename Work>
    bool attemptOnce(Work work);
    void beginSeries();
    void open();
    void commit();
    void close();
    void abandon(const std::exception &error);
    void complain(const std::string &outcome, const std::exception &error);

    LedgerFolder m_folder;
    std::mutex m_mutex;
    std::unique_ptr<LedgerDatabase> m_database; ///< null before the first use and after a failure
    std::size_t m_filesInTransaction = 0;       ///< 0 if none is open
    bool m_hasFailed = false;                   ///< in this series, or it is idle
    bool m_wasDoubted = false;                  ///< whether it was checked for damage in this series
    bool m_wasMoved = false;                    ///< in this series
    bool m_mayLackFiles = true;                 ///< whether it may lack readings of this run
    bool m_isIdle = false;                      ///< in this series, because there is nothing to do
    bool m_isCurrent = false;                   ///< whether the last series reached its end
    bool m_keepsHistory = false;
    std::vector<LogEntries> m_kept;     ///< as they were last read
    std::set<std::string> m_complaints; ///< those in the log
};

} // namespace burnwick
