// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerDatabase.h"

#include "ledger/EntryCodec.h"

#define XXH_INLINE_ALL
#include <xxhash.h>

#include <algorithm>
#include <array>

namespace burnwick {

namespace {

/// Small enough to be written anew with each appended line, large enough for short keys.
constexpr std::size_t entriesPerChunk = 256;
constexpr std::int64_t chunksPerFile = std::int64_t{1} << 24U;

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
    SQLite::Statement newestFile{database,
                                 "SELECT coalesce(max(seq), 0) FROM sqlite_sequence WHERE name = 'file'"};
    SQLite::Statement removeFile{database, "DELETE FROM file WHERE id = ?"};
    SQLite::Statement removeChunks{database, "DELETE FROM chunk WHERE id >= ? AND id < ?"};
    SQLite::Statement removeDetails{database, "DELETE FROM detail WHERE id >= ? AND id < ?"};
    SQLite::Statement findChunk{database, "SELECT entries, checksum FROM chunk WHERE id = ?"};
    SQLite::Statement findDetails{database, "SELECT details, checksum FROM detail WHERE id = ?"};
    SQLite::Statement replaceChunk{database, "REPLACE INTO chunk(id, entries, checksum) VALUES(?, ?, ?)"};
    SQLite::Statement replaceDetails{database, "REPLACE INTO detail(id, details, checksum) VALUES(?, ?, ?)"};
};

LedgerDatabase::LedgerDatabase(const std::filesystem::path &file)
    : m_file(file)
    , m_statements(new Statements{m_file.database()}) {}

LedgerDatabase::~LedgerDatabase() = default;

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
        if (!decodeEntries(checkedBytes(m_statements->findChunk, chunk), session, *entries))
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
        forget(row.id);
        return;
    }
    if (continued == nullptr) {
        forget(row.id);
        Use newest(m_statements->newestFile);
        newest.next();
        row.id = newest.integer(0) + 1;
    }
    std::size_t first = continued != nullptr ? continued->entries : 0;
    auto added = std::span(reading.newDetails);
    while (!added.empty()) {
        const std::size_t begin = first / entriesPerChunk * entriesPerChunk;
        const std::size_t count = std::min(added.size(), begin + entriesPerChunk - first);
        const std::int64_t chunk =
            row.id * chunksPerFile + static_cast<std::int64_t>(first / entriesPerChunk);
        std::vector<UsageDetails> details;
        if (first > begin && (!decodeDetails(checkedBytes(m_statements->findDetails, chunk), details) ||
                              details.size() != first - begin))
            throw DamagedLedger("details are malformed");
        details.insert(details.end(), added.begin(), added.begin() + static_cast<std::ptrdiff_t>(count));
        first += count;
        storeBytes(m_statements->replaceChunk, chunk,
                   encodeEntries(std::span(*reading.entries).subspan(begin, first - begin)));
        storeBytes(m_statements->replaceDetails, chunk, encodeDetails(details));
        added = added.subspan(count);
    }
    const RowNumbers numbers = numbersOf(reading.position);
    Use replace(m_statements->replaceFile);
    int index = 0;
    for (const std::int64_t number : numbers)
        replace.bind(++index, number);
    replace.bind(++index, row.id);
    replace.bind(++index, checksumOf(numbers, file.native(), row.id));
    replace.bind(++index, std::string_view(file.native()));
    replace.run();
}

std::vector<std::int64_t>
LedgerDatabase::filesUnless(const std::function<bool(const std::filesystem::path &)> &isNeeded) {
    std::vector<std::int64_t> unneeded;
    for (Use paths(m_statements->paths); paths.next();) {
        if (!isNeeded(std::filesystem::path(paths.bytes(1))))
            unneeded.push_back(paths.integer(0));
    }
    return unneeded;
}

void LedgerDatabase::forget(std::int64_t id) {
    if (id == 0)
        return;
    for (SQLite::Statement *statement : {&m_statements->removeChunks, &m_statements->removeDetails})
        Use(*statement, id * chunksPerFile, (id + 1) * chunksPerFile).run();
    Use(m_statements->removeFile, id).run();
}

} // namespace burnwick
