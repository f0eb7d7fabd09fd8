// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerDatabase.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <array>
#include <system_error>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {

namespace {

constexpr int applicationId = 0x4275726E; // "Burn"
constexpr int presentVersion = 1;
constexpr int busyMilliseconds = 200;

/// Small enough to be written anew with each appended line, large enough for short keys.
constexpr std::size_t entriesPerChunk = 256;
constexpr std::int64_t chunksPerFile = std::int64_t{1} << 24U;

/// The statements that bring a ledger from the version of their index to the next one.
constexpr std::array<const char *, presentVersion> migrations{R"(
    CREATE TABLE name(id INTEGER PRIMARY KEY, text BLOB NOT NULL UNIQUE, checksum INTEGER NOT NULL);
    CREATE TABLE file(
        id INTEGER PRIMARY KEY, path BLOB NOT NULL UNIQUE, device INTEGER NOT NULL, inode INTEGER NOT NULL,
        size INTEGER NOT NULL, modified INTEGER NOT NULL, changed INTEGER NOT NULL, position INTEGER NOT NULL,
        fingerprint INTEGER NOT NULL, entries INTEGER NOT NULL, settled INTEGER NOT NULL,
        checksum INTEGER NOT NULL);
    -- A chunk's identifier is the file's, times 2^24, plus its number; details are those of its entries.
    CREATE TABLE chunk(id INTEGER PRIMARY KEY, entries BLOB NOT NULL, checksum INTEGER NOT NULL);
    CREATE TABLE detail(id INTEGER PRIMARY KEY, details BLOB NOT NULL, checksum INTEGER NOT NULL);
)"};

std::int64_t checksumOf(std::string_view bytes, std::int64_t id) {
    return static_cast<std::int64_t>(
        XXH3_64bits_withSeed(bytes.data(), bytes.size(), static_cast<std::uint64_t>(id)));
}

using RowNumbers = std::array<std::int64_t, 9>;

RowNumbers numbersOf(const ReadingPosition &position) {
    const FileStatus &status = position.status;
    return {static_cast<std::int64_t>(status.device),
            static_cast<std::int64_t>(status.inode),
            static_cast<std::int64_t>(status.size),
            status.modified.value_or(Instant()).time_since_epoch().count(),
            status.changed.time_since_epoch().count(),
            static_cast<std::int64_t>(position.offset),
            static_cast<std::int64_t>(position.fingerprint),
            static_cast<std::int64_t>(position.entries),
            position.settled ? 1 : 0};
}

ReadingPosition positionOf(const RowNumbers &numbers) {
    const auto instant = [](std::int64_t count) { return Instant(Instant::duration(count)); };
    ReadingPosition position;
    position.status = {static_cast<std::uint64_t>(numbers[0]),
                       static_cast<std::uint64_t>(numbers[1]),
                       static_cast<std::uint64_t>(numbers[2]),
                       instant(numbers[3]),
                       instant(numbers[4]),
                       true};
    position.offset = static_cast<std::uint64_t>(numbers[5]);
    position.fingerprint = static_cast<std::uint64_t>(numbers[6]);
    position.entries = static_cast<std::size_t>(numbers[7]);
    position.settled = numbers[8] != 0;
    position.includesRest = position.offset == position.status.size;
    return position;
}

std::int64_t checksumOf(const RowNumbers &numbers, std::string_view path, std::int64_t id) {
    std::string bytes(reinterpret_cast<const char *>(numbers.data()),
                      sizeof numbers); // NOLINT: a hash of them
    return checksumOf(bytes.append(path), id);
}

/// Whether a reading from there on has the same lines before it.
bool isSamePlace(const ReadingPosition &a, const ReadingPosition &b) {
    return a.status.device == b.status.device && a.status.inode == b.status.inode && a.offset == b.offset &&
           a.fingerprint == b.fingerprint && a.entries == b.entries;
}

/// One use of a prepared statement. Resets it at the end, because an unfinished one keeps its transaction
/// open.
class Use {
public:
    template <typename... Values> // 64-bit integers or std::string_view for bytes
    explicit Use(SQLite::Statement &statement, const Values &...values)
        : m_statement(statement) {
        int index = 0;
        (bind(++index, values), ...);
    }
    ~Use() { m_statement.tryReset(); }
    Use(const Use &) = delete;
    Use &operator=(const Use &) = delete;

    void bind(int index, std::int64_t value) { m_statement.bind(index, value); }
    void bind(int index, std::string_view bytes) {
        // A null pointer would bind NULL.
        const void *data = bytes.empty() ? "" : bytes.data();
        m_statement.bindNoCopy(index, data, static_cast<int>(bytes.size()));
    }
    void run() { m_statement.exec(); }
    /// Steps to the next row; returns false at the end.
    bool next() { return m_statement.executeStep(); }
    [[nodiscard]] std::int64_t integer(int column) { return m_statement.getColumn(column).getInt64(); }
    /// Valid until the next step.
    [[nodiscard]] std::string_view bytes(int column) {
        const SQLite::Column value = m_statement.getColumn(column);
        const int size = value.getBytes();
        return size > 0 ? std::string_view(static_cast<const char *>(value.getBlob()),
                                           static_cast<std::size_t>(size))
                        : std::string_view();
    }

private:
    SQLite::Statement &m_statement;
};

/// Returns the row's bytes. Throws DamagedLedger without a row.
std::string checkedBytes(SQLite::Statement &find, std::int64_t id) {
    Use use(find, id);
    if (!use.next())
        throw DamagedLedger("a row is missing");
    std::string bytes(use.bytes(0));
    if (checksumOf(bytes, id) != use.integer(1))
        throw DamagedLedger("a row is altered");
    return bytes;
}

void storeBytes(SQLite::Statement &replace, std::int64_t id, std::string_view bytes) {
    Use(replace, id, bytes, checksumOf(bytes, id)).run();
}

/// Returns a number for a new row.
std::int64_t nextId(SQLite::Statement &newest) {
    Use use(newest);
    return use.next() ? use.integer(0) + 1 : 1;
}

/// Makes the file for its owner alone; SQLite gives the files beside it the same mode.
std::string preparedFile(const std::filesystem::path &file) {
    std::error_code error;
    std::filesystem::create_directories(file.parent_path().parent_path(), error);
    ::mkdir(file.parent_path().c_str(), S_IRWXU);
    const int descriptor = ::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOCTTY, S_IRUSR | S_IWUSR);
    if (descriptor >= 0)
        ::close(descriptor);
    return file.string();
}

} // namespace

struct LedgerDatabase::Statements {
    SQLite::Database &database;
    SQLite::Statement findFile{database,
                               "SELECT device, inode, size, modified, changed, position, fingerprint, "
                               "entries, settled, id, checksum FROM file WHERE path = ?"};
    SQLite::Statement replaceFile{database,
                                  "REPLACE INTO file(device, inode, size, modified, changed, position, "
                                  "fingerprint, entries, settled, id, checksum, path) "
                                  "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"};
    SQLite::Statement paths{database, "SELECT id, path FROM file"};
    SQLite::Statement newestFile{database, "SELECT coalesce(max(id), 0) FROM file"};
    SQLite::Statement removeFile{database, "DELETE FROM file WHERE id = ?"};
    SQLite::Statement removeChunks{database, "DELETE FROM chunk WHERE id >= ? AND id < ?"};
    SQLite::Statement removeDetails{database, "DELETE FROM detail WHERE id >= ? AND id < ?"};
    SQLite::Statement findChunk{database, "SELECT entries, checksum FROM chunk WHERE id = ?"};
    SQLite::Statement findDetails{database, "SELECT details, checksum FROM detail WHERE id = ?"};
    SQLite::Statement replaceChunk{database, "REPLACE INTO chunk(id, entries, checksum) VALUES(?, ?, ?)"};
    SQLite::Statement replaceDetails{database, "REPLACE INTO detail(id, details, checksum) VALUES(?, ?, ?)"};
    SQLite::Statement findName{database, "SELECT text, checksum FROM name WHERE id = ?"};
    SQLite::Statement findNumber{database, "SELECT id FROM name WHERE text = ?"};
    SQLite::Statement newestName{database, "SELECT coalesce(max(id), 0) FROM name"};
    SQLite::Statement replaceName{database, "REPLACE INTO name(id, text, checksum) VALUES(?, ?, ?)"};
};

LedgerDatabase::LedgerDatabase(const std::filesystem::path &file)
    : m_database(preparedFile(file), SQLite::OPEN_READWRITE | SQLite::OPEN_NOMUTEX, busyMilliseconds) {
    m_database.exec("PRAGMA synchronous = NORMAL");
    migrate();
    m_statements.reset(new Statements{m_database});
}

LedgerDatabase::~LedgerDatabase() = default;

void LedgerDatabase::migrate() {
    const auto pragma = [this](const char *name) {
        return m_database.execAndGet(std::string("PRAGMA ") + name).getInt();
    };
    if (pragma("user_version") == presentVersion && pragma("application_id") == applicationId)
        return;
    m_database.exec("PRAGMA journal_mode = WAL");
    beginWriting();
    try {
        // Asked again: another process may have been first.
        const int version = pragma("user_version");
        const bool isNew = version == 0 && pragma("application_id") == 0 &&
                           m_database.execAndGet("SELECT count(*) FROM sqlite_master").getInt() == 0;
        if (!isNew && pragma("application_id") != applicationId)
            throw ForeignLedger("it is no ledger of Burnwick");
        if (version > presentVersion)
            throw ForeignLedger("a later version of Burnwick wrote it");
        for (int i = version; i < presentVersion; ++i)
            m_database.exec(migrations.at(static_cast<std::size_t>(i)));
        m_database.exec("PRAGMA application_id = " + std::to_string(applicationId));
        m_database.exec("PRAGMA user_version = " + std::to_string(presentVersion));
        commit();
    } catch (...) {
        rollBack();
        throw;
    }
}

void LedgerDatabase::rollBack() noexcept {
    m_database.tryExec("ROLLBACK");
    m_numbers.clear();
    m_names.clear();
}

LedgerDatabase::Row LedgerDatabase::rowOf(const std::filesystem::path &file) {
    Use find(m_statements->findFile, std::string_view(file.native()));
    if (!find.next())
        return {};
    RowNumbers numbers{};
    int column = 0;
    for (std::int64_t &number : numbers)
        number = find.integer(column++);
    const std::int64_t id = find.integer(column++);
    if (checksumOf(numbers, file.native(), id) != find.integer(column))
        throw DamagedLedger("a row is altered");
    return {id, positionOf(numbers)};
}

std::optional<FileReading> LedgerDatabase::find(const std::filesystem::path &file) {
    const Row row = rowOf(file);
    if (row.id == 0)
        return std::nullopt;
    const InternedString session =
        row.position.entries > 0 ? InternedString(file.stem().native()) : InternedString();
    auto entries = std::make_shared<std::vector<JSONLEntry>>();
    entries->reserve(row.position.entries);
    for (std::int64_t chunk = row.id * chunksPerFile; entries->size() < row.position.entries; ++chunk) {
        if (!decodeEntries(checkedBytes(m_statements->findChunk, chunk), *this, session, *entries))
            throw DamagedLedger("entries are malformed");
    }
    if (entries->size() != row.position.entries)
        throw DamagedLedger("entries are missing");
    return FileReading{std::move(entries), row.position};
}

void LedgerDatabase::keep(const std::filesystem::path &file, const ReadingPosition *continued,
                          const FileReading &reading) {
    Row row = rowOf(file);
    if (continued != nullptr && (row.id == 0 || !isSamePlace(row.position, *continued))) {
        // The details of its first lines are not known here; they are read again when the file is unknown.
        if (row.id != 0)
            remove(row.id);
        return;
    }
    std::size_t first = 0;
    if (continued != nullptr) {
        first = continued->entries;
    } else {
        if (row.id != 0)
            remove(row.id);
        else
            row.id = nextId(m_statements->newestFile);
    }
    row.position = reading.position;
    auto added = std::span(reading.newDetails);
    while (!added.empty()) {
        const std::size_t begin = first / entriesPerChunk * entriesPerChunk;
        const std::size_t count = std::min(added.size(), begin + entriesPerChunk - first);
        const std::int64_t chunk =
            row.id * chunksPerFile + static_cast<std::int64_t>(first / entriesPerChunk);
        std::vector<UsageDetails> details;
        if (first > begin && !decodeDetails(checkedBytes(m_statements->findDetails, chunk), *this, details))
            throw DamagedLedger("details are malformed");
        details.insert(details.end(), added.begin(), added.begin() + static_cast<std::ptrdiff_t>(count));
        first += count;
        storeBytes(m_statements->replaceChunk, chunk,
                   encodeEntries(std::span(*reading.entries).subspan(begin, first - begin), *this));
        storeBytes(m_statements->replaceDetails, chunk, encodeDetails(details, *this));
        added = added.subspan(count);
    }
    const RowNumbers numbers = numbersOf(row.position);
    Use replace(m_statements->replaceFile);
    int index = 0;
    for (const std::int64_t number : numbers)
        replace.bind(++index, number);
    replace.bind(++index, row.id);
    replace.bind(++index, checksumOf(numbers, file.native(), row.id));
    replace.bind(++index, std::string_view(file.native()));
    replace.run();
}

void LedgerDatabase::remove(std::int64_t row) {
    for (SQLite::Statement *statement : {&m_statements->removeChunks, &m_statements->removeDetails})
        Use(*statement, row * chunksPerFile, (row + 1) * chunksPerFile).run();
    Use(m_statements->removeFile, row).run();
}

void LedgerDatabase::forgetUnless(const std::function<bool(const std::filesystem::path &)> &isNeeded) {
    std::vector<std::int64_t> unneeded;
    for (Use paths(m_statements->paths); paths.next();) {
        if (!isNeeded(std::filesystem::path(paths.bytes(1))))
            unneeded.push_back(paths.integer(0));
    }
    for (const std::int64_t row : unneeded)
        remove(row);
}

std::int64_t LedgerDatabase::numberOf(InternedString name) {
    if (!name.hasValue())
        return 0;
    std::int64_t &number = m_numbers[name];
    if (number != 0)
        return number;
    Use find(m_statements->findNumber, name.view());
    if (find.next()) {
        number = find.integer(0);
    } else {
        number = nextId(m_statements->newestName);
        storeBytes(m_statements->replaceName, number, name.view());
    }
    return number;
}

std::optional<InternedString> LedgerDatabase::named(std::int64_t number) {
    if (number == 0)
        return InternedString();
    InternedString &name = m_names[number];
    if (!name.hasValue())
        name = InternedString(checkedBytes(m_statements->findName, number));
    return name;
}

} // namespace burnwick
