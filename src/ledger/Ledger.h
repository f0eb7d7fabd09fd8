// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/ReadingStore.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <set>
#include <string>

namespace burnwick {

class LedgerDatabase;

/// The readings of this and earlier runs, in a SQLite file. Several processes may use it at once. A damaged
/// file is moved aside, and the next series of calls begins a new one; each other failure leaves it alone
/// until the next series. Each kind of failure is logged once. A series waits at most a fifth of a second for
/// others.
class Ledger final : public ReadingStore {
public:
    /// Touches nothing until the first call. The folder is made for the user alone if it is missing.
    explicit Ledger(std::filesystem::path folder);
    ~Ledger() override;

    /// Returns the ledger's folder in the user's data folder.
    [[nodiscard]] static std::filesystem::path userFolder();

    void recall(LogHistory &history) override;
    void keep(const std::filesystem::path &file, const ReadingPosition *continued,
              const FileReading &reading) override;
    void finish(const LogHistory *history) override;

private:
    template <typename Work>
    void attempt(Work work);
    void open();
    void commit(LedgerDatabase &database);
    void abandon(const std::string &reason, bool isDamaged);
    bool setAside() const;

    std::filesystem::path m_file;
    std::mutex m_mutex;
    std::unique_ptr<LedgerDatabase> m_database; ///< null before the first use and after a failure
    FileStatus m_opened;                        ///< the file's when it was opened
    std::size_t m_filesInTransaction = 0;       ///< 0 if none is open
    bool m_hasFailed = false;                   ///< in this series, or there is nothing to do
    std::set<std::string> m_complaints;         ///< those in the log
};

} // namespace burnwick
