// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/LedgerFile.h"
#include "ledger/SessionLines.h"

#include <memory>
#include <string>
#include <vector>

namespace burnwick {

/// The ledger's table of usage lines of deleted logs, with a row for each session. All operations throw
/// SQLite::Exception and DamagedLedger. For one thread at a time.
class KeptTable final {
public:
    /// The database must outlive the object.
    explicit KeptTable(SQLite::Database &database);
    ~KeptTable();

    /// Returns whether the ledger keeps the lines of deleted logs.
    [[nodiscard]] bool isKeeping();
    /// Returns all sessions in the order of their names.
    [[nodiscard]] std::vector<std::string> sessions();
    /// Returns the session's lines; no lines if it is unknown.
    [[nodiscard]] SessionLines linesOf(InternedString session);

    // These need an open transaction.

    /// Replaces the session's lines. Removes the session if there are no lines.
    void replace(const SessionLines &lines);
    /// Makes isKeeping() true.
    void begin();
    /// Makes isKeeping() false. Removes all lines, and overwrites them in the file.
    void end();

private:
    struct Statements;

    std::unique_ptr<Statements> m_statements;
};

} // namespace burnwick
