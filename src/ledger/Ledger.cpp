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

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(ledgerLog, "burnwick.ledger")

/// Others wait while a transaction is open.
constexpr std::size_t filesPerTransaction = 64;

/// Keeps other processes from moving the folder's files (LOCK_SH) or from opening them (LOCK_EX). Never
/// waits.
class FolderLock {
public:
    FolderLock(const std::filesystem::path &folder, int kind)
        : m_folder(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
        , m_error(::flock(m_folder, kind | LOCK_NB) == 0 ? 0 : errno) {}
    ~FolderLock() {
        if (m_folder >= 0)
            ::close(m_folder);
    }
    FolderLock(const FolderLock &) = delete;
    FolderLock &operator=(const FolderLock &) = delete;

    [[nodiscard]] bool isHeld() const { return m_error == 0; }
    [[nodiscard]] bool isHeldByOthers() const { return m_error == EWOULDBLOCK; }

private:
    int m_folder;
    int m_error;
};

/// Makes the file for its owner alone; SQLite gives the files beside it the same mode.
void createIfMissing(const std::filesystem::path &file) {
    std::error_code ignored; // SQLite fails on what is missing
    std::filesystem::create_directories(file.parent_path().parent_path(), ignored);
    ::mkdir(file.parent_path().c_str(), S_IRWXU);
    // An existing file is not opened: closing it would drop the locks that this process has on it.
    const int flags = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY;
    if (const int descriptor = ::open(file.c_str(), flags, S_IRUSR | S_IWUSR); descriptor >= 0)
        ::close(descriptor);
}

bool isSameFile(const FileStatus &a, const FileStatus &b) {
    return a.device == b.device && a.inode == b.inode;
}

/// Whether a failure of SQLite is due to the file's contents.
bool isDamage(const SQLite::Exception &error) {
    switch (error.getErrorCode()) {
    case SQLITE_CORRUPT:
    case SQLITE_NOTADB:
    case SQLITE_ERROR:      // due to an altered schema
    case SQLITE_CONSTRAINT: // due to an altered index
    case SQLITE_MISMATCH:
    case SQLITE_TOOBIG:
        return true;
    default:
        return false;
    }
}

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
    m_hasFailed = true;
    try {
        if (m_database == nullptr)
            open();
        work(*m_database);
        m_hasFailed = false;
    } catch (const DamagedLedger &error) {
        abandon(error.what(), true);
    } catch (const SQLite::Exception &error) {
        abandon(error.what(), isDamage(error));
    } catch (const std::exception &error) {
        abandon(error.what(), false);
    }
}

void Ledger::open() {
    createIfMissing(m_file);
    const FolderLock lock(m_file.parent_path(), LOCK_SH);
    if (lock.isHeldByOthers())
        throw SQLite::Exception("another program is moving it aside", SQLITE_BUSY);
    m_opened = statusOf(m_file);
    m_database = std::make_unique<LedgerDatabase>(m_file);
}

/// Undoes what was not committed, and closes the file.
void Ledger::abandon(const std::string &reason, bool isDamaged) {
    m_database.reset();
    m_filesInTransaction = 0;
    const std::string outcome = !isDamaged   ? "not used now: "
                                : setAside() ? "damaged and moved aside: "
                                             : "damaged and not used: ";
    if (m_complaints.insert(outcome + reason).second)
        qCWarning(ledgerLog, "%s: %s%s", m_file.c_str(), outcome.c_str(), reason.c_str());
}

/// Moves the file that was opened. Returns false if it is still in its place.
bool Ledger::setAside() const {
    const FolderLock lock(m_file.parent_path(), LOCK_EX);
    if (!lock.isHeld())
        return false;
    // Another process may have moved it aside and made a new one.
    if (!isSameFile(statusOf(m_file), m_opened))
        return true;
    for (const std::string_view suffix : {"", "-wal", "-shm", "-journal"}) {
        std::filesystem::path former = m_file;
        std::filesystem::path aside = m_file;
        former += suffix;
        aside += std::string(".damaged").append(suffix);
        std::error_code error;
        std::filesystem::remove(aside, error);
        std::filesystem::rename(former, aside, error);
        if (error && suffix.empty())
            return false;
    }
    return true;
}

void Ledger::recall(LogHistory &history) {
    const std::lock_guard lock(m_mutex);
    // Without logs there is nothing to remember; then nothing is created.
    m_hasFailed = history.files.empty() && !statusOf(m_file).regular;
    // A series that did not reach its end, or a file that was moved.
    if (m_filesInTransaction > 0 || !isSameFile(statusOf(m_file), m_opened)) {
        m_database.reset();
        m_filesInTransaction = 0;
    }
    attempt([&](LedgerDatabase &database) {
        database.beginSeries();
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
        if (m_filesInTransaction == 0)
            database.beginWriting();
        ++m_filesInTransaction;
        database.keep(file, continued, reading);
        if (m_filesInTransaction == filesPerTransaction)
            commit(database);
    });
}

void Ledger::finish(const LogHistory *history) {
    const std::lock_guard lock(m_mutex);
    attempt([&](LedgerDatabase &database) {
        if (m_filesInTransaction > 0)
            commit(database);
        if (history == nullptr)
            return;
        std::unordered_set<std::string_view> paths;
        for (const LogFile &file : history->files)
            paths.insert(file.path.native());
        const auto unneeded = database.filesUnless(
            [&paths](const std::filesystem::path &path) { return paths.contains(path.native()); });
        if (unneeded.empty())
            return;
        database.beginWriting();
        for (const std::int64_t file : unneeded)
            database.forget(file);
        commit(database);
    });
}

void Ledger::commit(LedgerDatabase &database) {
    database.commit();
    m_filesInTransaction = 0;
}

} // namespace burnwick
