// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/Patience.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <filesystem>
#include <memory>
#include <stdexcept>

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

/// The ledger's open SQLite file in the present version of its tables. For one thread at a time.
class LedgerFile final {
public:
    /// Opens the file, which may be empty, and brings an older one to the present version. Begins a series.
    /// Throws SQLite::Exception, DamagedLedger and ForeignLedger, and leaves a foreign file as it is.
    explicit LedgerFile(const std::filesystem::path &file, Patience patience = Patience::usual);
    ~LedgerFile();

    /// Begins a series of operations.
    void beginSeries();
    [[nodiscard]] SQLite::Database &database() { return m_database; }

private:
    class BoundedFileAccess;

    int storedVersion();
    void migrate();

    std::unique_ptr<BoundedFileAccess> m_access;
    SQLite::Database m_database;
};

} // namespace burnwick
