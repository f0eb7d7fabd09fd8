// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerFolder.h"

#include "ledger/LedgerDatabase.h"

#include <QtCore/QLoggingCategory>

#include <chrono>
#include <string>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <sqlite3.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {

namespace {

namespace fs = std::filesystem;

Q_LOGGING_CATEGORY(ledgerLog, "burnwick.ledger")

constexpr std::chrono::hours backUpInterval{24};
constexpr std::chrono::hours retryInterval{1};

constexpr std::string_view filesBeside[] = {"-wal", "-shm", "-journal"};

fs::path with(fs::path path, std::string_view suffix) {
    return path += suffix;
}

void removeFiles(const fs::path &file) {
    std::error_code ignored; // they may be missing
    fs::remove(file, ignored);
    for (const std::string_view suffix : filesBeside)
        fs::remove(with(file, suffix), ignored);
}

/// An open file or folder with an advisory lock. Never waits for it.
class LockedFile {
public:
    LockedFile(const fs::path &path, int flags, int kind)
        : m_descriptor(::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, S_IRUSR | S_IWUSR))
        , m_error(m_descriptor < 0 || ::flock(m_descriptor, kind | LOCK_NB) != 0 ? errno : 0) {}
    ~LockedFile() {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }
    LockedFile(const LockedFile &) = delete;
    LockedFile &operator=(const LockedFile &) = delete;

    [[nodiscard]] int descriptor() const { return m_descriptor; }
    /// The value of errno; 0 if the lock is held.
    [[nodiscard]] int error() const { return m_error; }
    [[nodiscard]] bool isHeld() const { return m_error == 0; }
    [[nodiscard]] bool isHeldByOthers() const { return m_error == EWOULDBLOCK; }

private:
    int m_descriptor;
    int m_error;
};

/// Keeps other processes from moving the folder's files (LOCK_SH) or from opening them (LOCK_EX).
class FolderLock : public LockedFile {
public:
    FolderLock(const fs::path &file, int kind)
        : LockedFile(file.parent_path(), O_RDONLY | O_DIRECTORY, kind) {}
};

bool isSameFile(const FileStatus &a, const FileStatus &b) {
    return a.device == b.device && a.inode == b.inode;
}

/// Makes the file for its owner alone; SQLite gives the files beside it the same mode.
void createIfMissing(const fs::path &file) {
    // An existing file is not opened: closing it would drop the locks that this process has on it.
    const int flags = O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC | O_NOCTTY;
    if (const int descriptor = ::open(file.c_str(), flags, S_IRUSR | S_IWUSR); descriptor >= 0)
        ::close(descriptor);
}

void moveAside(const fs::path &file) {
    const fs::path aside = with(file, ".damaged");
    removeFiles(aside);
    fs::rename(file, aside);
    std::error_code ignored; // they may be missing
    for (const std::string_view suffix : filesBeside)
        fs::rename(with(file, suffix), with(aside, suffix), ignored);
}

/// Throws std::system_error with errno unless the call succeeded.
void require(bool hasSucceeded, const fs::path &file) {
    if (!hasSucceeded)
        throw std::system_error(errno, std::generic_category(), file.string());
}

/// Throws other failures than damage.
bool isDamaged(const fs::path &file) {
    try {
        LedgerDatabase(file).check();
        return false;
    } catch (const std::exception &error) {
        if (!isDamage(error))
            throw;
        return true;
    }
}

} // namespace

bool isDamage(const std::exception &error) {
    if (dynamic_cast<const DamagedLedger *>(&error) != nullptr)
        return true;
    const auto *failure = dynamic_cast<const SQLite::Exception *>(&error);
    switch (failure != nullptr ? failure->getErrorCode() : SQLITE_OK) {
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

LedgerFolder::LedgerFolder(const fs::path &folder, Patience patience)
    : m_file(folder / "ledger.sqlite")
    , m_backup(folder / "ledger.backup.sqlite")
    , m_patience(patience) {}

std::unique_ptr<LedgerDatabase> LedgerFolder::open() {
    std::error_code ignored; // SQLite fails if the folder is missing
    fs::create_directories(m_file.parent_path().parent_path(), ignored);
    ::mkdir(m_file.parent_path().c_str(), S_IRWXU);
    if (isMissing() && statusOf(m_backup).regular) {
        if (m_patience == Patience::brief)
            throw SQLite::Exception("another program must restore it", SQLITE_BUSY);
        restore();
    }
    createIfMissing(m_file);
    const FolderLock lock(m_file, LOCK_SH);
    if (lock.isHeldByOthers())
        throw SQLite::Exception("another program is moving it aside", SQLITE_BUSY);
    m_opened = statusOf(m_file);
    return std::make_unique<LedgerDatabase>(m_file, m_patience);
}

/// Puts a copy of the backup in the place of the missing file. Moves a damaged backup aside instead.
void LedgerFolder::restore() const {
    const FolderLock lock(m_file, LOCK_EX);
    if (lock.isHeldByOthers())
        throw SQLite::Exception("another program is restoring it", SQLITE_BUSY);
    if (!isMissing())
        return;
    const fs::path copy = with(m_file, ".restored");
    removeFiles(copy);
    fs::copy_file(m_backup, copy);
    // Twice, because bytes that could not be read for a moment look like damage.
    if (isDamaged(copy) && isDamaged(copy)) {
        removeFiles(copy);
        moveAside(m_backup);
        qCWarning(ledgerLog, "%s: damaged and moved aside", m_backup.c_str());
        return;
    }
    {
        const LockedFile file(copy, O_RDONLY, LOCK_SH);
        require(::fsync(file.descriptor()) == 0, copy);
    }
    // Files beside the missing one do not belong to the copy.
    removeFiles(m_file);
    fs::rename(copy, m_file);
}

/// Whether there is no file, or an empty one.
bool LedgerFolder::isMissing() const {
    const FileStatus status = statusOf(m_file);
    return !status.modified || (status.regular && status.size == 0);
}

bool LedgerFolder::isUnused() const {
    return !statusOf(m_file).regular && !statusOf(m_backup).regular;
}

bool LedgerFolder::isOther() const {
    return !isSameFile(statusOf(m_file), m_opened);
}

bool LedgerFolder::isSound() const {
    try {
        return !isDamaged(m_file);
    } catch (const std::exception &) {
        return true;
    }
}

bool LedgerFolder::setAside() const {
    const FolderLock lock(m_file, LOCK_EX);
    if (!lock.isHeld())
        return false;
    // Another process may have moved it aside and made a new one.
    if (isOther())
        return true;
    try {
        moveAside(m_file);
    } catch (const fs::filesystem_error &) {
        return false;
    }
    return true;
}

void LedgerFolder::backUpDaily(LedgerDatabase &database) {
    using std::chrono::steady_clock;
    const auto now = steady_clock::now();
    if (m_backUpTried && now - *m_backUpTried < retryInterval)
        return;
    m_backUpTried = now;
    const auto present = std::chrono::time_point_cast<Instant::duration>(std::chrono::system_clock::now());
    const auto age = std::chrono::abs(present - statusOf(m_backup).modified.value_or(Instant()));
    if (age >= backUpInterval)
        backUp(database);
}

void LedgerFolder::backUp(LedgerDatabase &database) {
    const fs::path draft = with(m_backup, ".new");
    const LockedFile lock(draft, O_RDWR | O_CREAT | O_NOFOLLOW, LOCK_EX);
    if (lock.descriptor() < 0)
        throw std::system_error(lock.error(), std::generic_category(), draft.string());
    // Another process may have finished it meanwhile.
    if (lock.isHeldByOthers() || !isSameFile(statusOf(lock.descriptor()), statusOf(draft)))
        return;
    try {
        require(::ftruncate(lock.descriptor(), 0) == 0, draft);
        database.copyTo(draft);
        require(::fsync(lock.descriptor()) == 0, draft);
        fs::rename(draft, m_backup);
    } catch (...) {
        removeFiles(draft);
        throw;
    }
}

void LedgerFolder::removeCopies() const {
    for (const fs::path &file : {m_backup, with(m_backup, ".new"), with(m_backup, ".damaged"),
                                 with(m_file, ".restored"), with(m_file, ".damaged")})
        removeFiles(file);
}

} // namespace burnwick
