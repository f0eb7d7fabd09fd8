// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerFile.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <string>
#include <thread>

#include <sqlite3.h>

namespace burnwick {

namespace {

constexpr int applicationId = 0x4275726E; // "Burn"
constexpr int presentVersion = 3;

using std::chrono::microseconds;
using namespace std::chrono_literals;

constexpr microseconds waitPerSeries(Patience patience) {
    return patience == Patience::usual ? 200ms : 20ms;
}

/// The statements that bring a ledger from the version of their index to the next one.
constexpr std::array<const char *, presentVersion> migrations{R"(
    -- An identifier is never used again, so that an old chunk that came back is not taken for a new one.
    CREATE TABLE file(
        id INTEGER PRIMARY KEY AUTOINCREMENT, path BLOB NOT NULL UNIQUE, device INTEGER NOT NULL,
        inode INTEGER NOT NULL, size INTEGER NOT NULL, modified INTEGER NOT NULL, changed INTEGER NOT NULL,
        position INTEGER NOT NULL, fingerprint INTEGER NOT NULL, entries INTEGER NOT NULL,
        settled INTEGER NOT NULL, checksum INTEGER NOT NULL);
    -- A chunk's identifier is the file's, times 2^24, plus its number; details are those of its entries.
    CREATE TABLE chunk(id INTEGER PRIMARY KEY, entries BLOB NOT NULL, checksum INTEGER NOT NULL);
    CREATE TABLE detail(id INTEGER PRIMARY KEY, details BLOB NOT NULL, checksum INTEGER NOT NULL);
)",
                                                              R"(
    CREATE TABLE kept(
        session BLOB PRIMARY KEY, entries BLOB NOT NULL, details BLOB NOT NULL, checksum INTEGER NOT NULL);
    -- Has one row while the ledger keeps the lines of deleted logs.
    CREATE TABLE keeping(id INTEGER PRIMARY KEY);
)",
                                                              R"(
    -- Samples of a limit's window: its first known reset in nanoseconds, the time of the first one in seconds.
    CREATE TABLE limitPart(
        reset INTEGER NOT NULL, kind INTEGER NOT NULL, model BLOB NOT NULL, begin INTEGER NOT NULL,
        samples BLOB NOT NULL, checksum INTEGER NOT NULL,
        PRIMARY KEY(reset, kind, model, begin)) WITHOUT ROWID;
    -- Has one row, the number of transactions that wrote to the tables of lines.
    CREATE TABLE edition(number INTEGER NOT NULL);
    INSERT INTO edition VALUES(0);
)"};

} // namespace

/// SQLite's access to files, with a limit on the time that a series sleeps while others have locks. SQLite's
/// own limit does not apply to locks in the file "-shm", which it tries for ten seconds.
class LedgerFile::BoundedFileAccess final : private sqlite3_vfs {
public:
    explicit BoundedFileAccess(Patience patience)
        : sqlite3_vfs(*sqlite3_vfs_find(nullptr))
        , m_name("burnwick-" + std::to_string(reinterpret_cast<std::uintptr_t>(this))) // NOLINT: unique
        , m_most(waitPerSeries(patience)) {
        zName = m_name.c_str();
        xSleep = [](sqlite3_vfs *self, int time) {
            return static_cast<BoundedFileAccess *>(self)->sleep(microseconds(time));
        };
        sqlite3_vfs_register(this, 0);
    }
    ~BoundedFileAccess() { sqlite3_vfs_unregister(this); }
    BoundedFileAccess(const BoundedFileAccess &) = delete;
    BoundedFileAccess &operator=(const BoundedFileAccess &) = delete;

    /// Returns the time in microseconds; 0 when the series must not wait longer.
    int sleep(microseconds time) {
        time = std::min(time, m_left);
        m_left -= time;
        std::this_thread::sleep_for(time);
        return static_cast<int>(time.count());
    }

    void beginSeries() { m_left = m_most; }
    [[nodiscard]] const std::string &name() const { return m_name; }

private:
    const std::string m_name;
    const microseconds m_most;
    microseconds m_left = m_most;
};

LedgerFile::LedgerFile(const std::filesystem::path &file, Patience patience)
    : m_access(std::make_unique<BoundedFileAccess>(patience))
    , m_database(file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, 0, m_access->name()) {
    sqlite3 *const handle = m_database.getHandle();
    // SQLite could read it, and would leave files beside it.
    if (sqlite3_db_readonly(handle, "main") != 0)
        throw SQLite::Exception("it cannot be written", SQLITE_READONLY);
    const auto wait = [](void *access, int /*attempt*/) {
        return static_cast<BoundedFileAccess *>(access)->sleep(5ms) > 0 ? 1 : 0;
    };
    sqlite3_busy_handler(handle, wait, m_access.get());
    // Otherwise closing a foreign file could alter it.
    sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    m_database.exec("PRAGMA synchronous = NORMAL");
    migrate();
    if (patience == Patience::usual)
        sqlite3_db_config(handle, SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
}

LedgerFile::~LedgerFile() = default;

void LedgerFile::beginSeries() {
    m_access->beginSeries();
}

int LedgerFile::storedVersion() {
    const auto integer = [this](const char *query) { return m_database.execAndGet(query).getInt(); };
    const int owner = integer("PRAGMA application_id");
    const int version = integer("PRAGMA user_version");
    if (owner == 0 && version == 0 && integer("SELECT count(*) FROM sqlite_master") == 0)
        return 0;
    if (owner != applicationId)
        throw ForeignLedger("it is no ledger of Burnwick");
    if (version > presentVersion)
        throw ForeignLedger("a later version of Burnwick wrote it");
    if (version < 1 || sqlite3_db_readonly(m_database.getHandle(), "main") != 0)
        throw DamagedLedger("its header is altered");
    return version;
}

void LedgerFile::migrate() {
    m_database.exec("BEGIN");
    const int version = storedVersion();
    m_database.exec("COMMIT");
    if (version == presentVersion)
        return;
    m_database.exec("PRAGMA journal_mode = WAL");
    m_database.exec("BEGIN IMMEDIATE");
    // Another process may have been first.
    for (int i = storedVersion(); i < presentVersion; ++i)
        m_database.exec(migrations.at(static_cast<std::size_t>(i)));
    m_database.exec("PRAGMA application_id = " + std::to_string(applicationId));
    m_database.exec("PRAGMA user_version = " + std::to_string(presentVersion));
    m_database.exec("COMMIT");
}

} // namespace burnwick
