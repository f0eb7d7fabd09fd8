// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/LedgerFile.h"
#include "logs/ReadingStore.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

namespace burnwick {

/// The ledger's tables. Each row carries a checksum, because SQLite does not notice altered contents. All
/// operations throw SQLite::Exception and DamagedLedger; the object is of no use afterwards. Destroying it
/// undoes an open transaction. For one thread at a time.
class LedgerDatabase final {
public:
    /// Opens the file, which may be empty, and brings an older one to the present version. Throws
    /// ForeignLedger, too, and leaves such a file as it is. Begins a series.
    explicit LedgerDatabase(const std::filesystem::path &file);
    ~LedgerDatabase();

    /// Begins a series of operations, which wait at most a fifth of a second altogether for other processes.
    void beginSeries() { m_file.beginSeries(); }

    /// Returns the file's reading without new details; null if it is unknown.
    [[nodiscard]] std::optional<FileReading> find(const std::filesystem::path &file);
    /// Returns the numbers of all files for which the function returns false.
    [[nodiscard]] std::vector<std::int64_t>
    filesUnless(const std::function<bool(const std::filesystem::path &)> &isNeeded);

    // These need an open transaction.

    /// See ReadingStore::keep(). Forgets the file if the reading continues another one than the stored one.
    void keep(const std::filesystem::path &file, const ReadingPosition *continued,
              const FileReading &reading);
    /// Forgets the file of that number. Does nothing without one.
    void forget(std::int64_t id);

    /// Begin a transaction, which sees one state of the file.
    void beginReading() { m_file.database().exec("BEGIN"); }
    void beginWriting() { m_file.database().exec("BEGIN IMMEDIATE"); }
    void commit() { m_file.database().exec("COMMIT"); }

private:
    struct Row {
        std::int64_t id = 0; ///< 0 if unknown
        ReadingPosition position;
    };
    struct Statements;

    Row rowOf(const std::filesystem::path &file);

    LedgerFile m_file;
    std::unique_ptr<Statements> m_statements;
};

} // namespace burnwick
