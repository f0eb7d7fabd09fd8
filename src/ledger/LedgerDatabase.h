// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/EntryCodec.h"
#include "logs/ReadingStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <unordered_map>

namespace burnwick {

/// Thrown for contents that Burnwick never wrote.
class DamagedLedger final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Thrown for a file that another program, or a later version, owns.
class ForeignLedger final : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The ledger's tables. Each row carries a checksum, because SQLite does not notice altered contents. All
/// operations throw SQLite::Exception and DamagedLedger. For one thread at a time.
class LedgerDatabase final : private NameTable {
public:
    /// Opens the file or creates it, with mode 0600, and brings an older one to the present version. Throws
    /// ForeignLedger, too. Waits at most a fifth of a second for other processes, here and later.
    explicit LedgerDatabase(const std::filesystem::path &file);
    ~LedgerDatabase() override;

    /// Returns the file's reading without new details; null if it is unknown.
    [[nodiscard]] std::optional<FileReading> find(const std::filesystem::path &file);

    // These need an open transaction.

    /// See ReadingStore::keep(). Forgets the file if the reading continues another one than the stored one.
    void keep(const std::filesystem::path &file, const ReadingPosition *continued,
              const FileReading &reading);
    /// Forgets all files for which the function returns false.
    void forgetUnless(const std::function<bool(const std::filesystem::path &)> &isNeeded);

    /// Begin a transaction, which sees one state of the file.
    void beginReading() { m_database.exec("BEGIN"); }
    void beginWriting() { m_database.exec("BEGIN IMMEDIATE"); }
    void commit() { m_database.exec("COMMIT"); }
    /// Undoes what was written in the transaction. Does nothing without a transaction.
    void rollBack() noexcept;

private:
    struct Row {
        std::int64_t id = 0; ///< 0 if unknown
        ReadingPosition position;
    };

    void migrate();
    Row rowOf(const std::filesystem::path &file);
    void remove(std::int64_t row);
    std::int64_t numberOf(InternedString name) override;
    std::optional<InternedString> named(std::int64_t number) override;

    struct Statements;

    SQLite::Database m_database;
    std::unique_ptr<Statements> m_statements;
    std::unordered_map<InternedString, std::int64_t> m_numbers;
    std::unordered_map<std::int64_t, InternedString> m_names;
};

} // namespace burnwick
