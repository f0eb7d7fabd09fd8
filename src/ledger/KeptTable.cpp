// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/KeptTable.h"

#include "ledger/EntryCodec.h"
#include "ledger/TableRow.h"

namespace burnwick {

namespace {

std::int64_t checksumOf(std::string_view session, std::string_view entries, std::string_view details) {
    return burnwick::checksumOf(entries, burnwick::checksumOf(details, burnwick::checksumOf(session, 0)));
}

} // namespace

struct KeptTable::Statements {
    SQLite::Database &database;
    SQLite::Statement sessions{database, "SELECT session FROM kept ORDER BY session"};
    SQLite::Statement find{database, "SELECT entries, details, checksum FROM kept WHERE session = ?"};
    SQLite::Statement replace{database,
                              "REPLACE INTO kept(session, entries, details, checksum) VALUES(?, ?, ?, ?)"};
    SQLite::Statement remove{database, "DELETE FROM kept WHERE session = ?"};
    SQLite::Statement isKeeping{database, "SELECT count(*) FROM keeping"};
};

KeptTable::KeptTable(SQLite::Database &database)
    : m_statements(new Statements{database}) {}

KeptTable::~KeptTable() = default;

std::vector<std::string> KeptTable::sessions() {
    std::vector<std::string> sessions;
    for (StatementUse use(m_statements->sessions); use.next();)
        sessions.emplace_back(use.bytes(0));
    return sessions;
}

SessionLines KeptTable::linesOf(InternedString session) {
    SessionLines lines{session, {}, {}};
    StatementUse find(m_statements->find, session.view());
    if (!find.next())
        return lines;
    const std::string_view entries = find.bytes(0);
    const std::string_view details = find.bytes(1);
    if (checksumOf(session.view(), entries, details) != find.integer(2))
        throw DamagedLedger("a row is altered");
    if (!decodeEntries(entries, session, lines.entries) || !decodeDetails(details, lines.details) ||
        lines.details.size() != lines.entries.size())
        throw DamagedLedger("kept lines are malformed");
    if (lines.entries.empty())
        throw DamagedLedger("kept lines are missing");
    return lines;
}

void KeptTable::replace(const SessionLines &lines) {
    const std::string_view session = lines.session.view();
    if (lines.entries.empty()) {
        StatementUse(m_statements->remove, session).run();
        return;
    }
    const std::string entries = encodeEntries(lines.entries);
    const std::string details = encodeDetails(lines.details);
    StatementUse(m_statements->replace, session, std::string_view(entries), std::string_view(details),
                 checksumOf(session, entries, details))
        .run();
}

bool KeptTable::isKeeping() {
    StatementUse use(m_statements->isKeeping);
    return use.next() && use.integer(0) > 0;
}

void KeptTable::begin() {
    m_statements->database.exec("REPLACE INTO keeping VALUES(1)");
}

void KeptTable::end() {
    m_statements->database.exec("PRAGMA secure_delete = ON");
    m_statements->database.exec("DELETE FROM kept");
    m_statements->database.exec("DELETE FROM keeping");
}

} // namespace burnwick
