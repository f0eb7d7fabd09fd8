// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/Ledger.h"

#include "ledger/LedgerDatabase.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QStandardPaths>

#include <string_view>
#include <system_error>
#include <unordered_set>
#include <utility>

#include <sqlite3.h>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(ledgerLog, "burnwick.ledger")

/// Others wait while a transaction is open.
constexpr std::size_t filesPerTransaction = 64;

} // namespace

Ledger::Ledger(std::filesystem::path folder)
    : m_file(std::move(folder) / "ledger.sqlite") {}

Ledger::~Ledger() = default;

std::filesystem::path Ledger::userFolder() {
    return QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation).toStdString() + "/burnwick";
}

/// Calls the function with the open database unless this series has failed.
template <typename Work>
void Ledger::attempt(Work work) {
    if (m_hasFailed)
        return;
    try {
        if (m_database == nullptr)
            m_database = std::make_unique<LedgerDatabase>(m_file);
        work(*m_database);
        return;
    } catch (const DamagedLedger &error) {
        complain(std::string("damaged, moved aside and begun anew: ") + error.what());
        setAside();
    } catch (const SQLite::Exception &error) {
        const bool isDamaged =
            error.getErrorCode() == SQLITE_CORRUPT || error.getErrorCode() == SQLITE_NOTADB;
        complain(isDamaged ? std::string("damaged, moved aside and begun anew: ") + error.what()
                           : std::string("not used now: ") + error.what());
        if (isDamaged)
            setAside();
    } catch (const ForeignLedger &error) {
        complain(std::string("not used: ") + error.what());
    }
    m_hasFailed = true;
    m_isWriting = false;
    m_database.reset();
}

void Ledger::complain(const std::string &reason) {
    if (std::exchange(m_complaint, reason) != reason)
        qCWarning(ledgerLog, "%s: %s", m_file.c_str(), reason.c_str());
}

void Ledger::setAside() {
    m_database.reset();
    std::error_code ignored;
    for (const std::string_view suffix : {"", "-wal", "-shm"}) {
        std::filesystem::path former = m_file;
        std::filesystem::path aside = m_file;
        former += suffix;
        aside += std::string(".damaged").append(suffix);
        std::filesystem::remove(aside, ignored);
        std::filesystem::rename(former, aside, ignored);
    }
}

void Ledger::recall(LogHistory &history) {
    const std::lock_guard lock(m_mutex);
    m_hasFailed = false;
    attempt([&](LedgerDatabase &database) {
        database.beginReading();
        for (std::size_t i = 0; i < history.files.size(); ++i) {
            if (history.entries[i] != nullptr || !history.files[i].status.regular)
                continue;
            if (auto reading = database.find(history.files[i].path)) {
                history.entries[i] = std::move(reading->entries);
                history.positions[i] = reading->position;
            }
        }
        database.commit();
    });
}

void Ledger::keep(const std::filesystem::path &file, const ReadingPosition *continued,
                  const FileReading &reading) {
    const std::lock_guard lock(m_mutex);
    attempt([&](LedgerDatabase &database) {
        if (!m_isWriting)
            database.beginWriting();
        m_isWriting = true;
        database.keep(file, continued, reading);
        if (++m_filesToCommit % filesPerTransaction == 0) {
            database.commit();
            m_isWriting = false;
        }
    });
}

void Ledger::finish(const LogHistory *history) {
    const std::lock_guard lock(m_mutex);
    attempt([&](LedgerDatabase &database) {
        if (m_isWriting)
            database.commit();
        m_isWriting = false;
        if (history == nullptr)
            return;
        std::unordered_set<std::string_view> paths;
        for (const LogFile &file : history->files)
            paths.insert(file.path.native());
        database.forgetUnless(
            [&paths](const std::filesystem::path &path) { return paths.contains(path.native()); });
    });
}

} // namespace burnwick
