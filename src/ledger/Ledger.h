// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/ReadingStore.h"

#include <filesystem>
#include <memory>
#include <mutex>
#include <string>

namespace burnwick {

class LedgerDatabase;

/// The readings of this and earlier runs, in a SQLite file. Several processes may use it at once. A damaged
/// file is moved aside and begun anew; each other failure leaves it alone until the next series of calls. A
/// kind of failure is logged once.
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
    void begin();
    void setAside();
    void complain(const std::string &reason);

    std::filesystem::path m_file;
    std::mutex m_mutex;
    std::unique_ptr<LedgerDatabase> m_database; ///< null before the first use and after a failure
    bool m_isWriting = false;                   ///< in a transaction
    bool m_hasFailed = false;                   ///< in this series
    std::size_t m_filesToCommit = 0;
    std::string m_complaint; ///< the last one
};

} // namespace burnwick
