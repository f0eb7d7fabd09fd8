// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/FileTable.h"

#include "ledger/EntryCodec.h"
#include "ledger/TableRow.h"

#include <algorithm>
#include <array>

namespace burnwick {

namespace {

/// Small enough to be written anew with each appended line, large enough for short keys.
constexpr std::size_t entriesPerChunk = 256;
constexpr std::int64_t chunksPerFile = std::int64_t{1} << 24U;

using RowNumbers = std::array<std::int64_t, 9>;

/// `lines` is the number of entries with that behind the offset, of an unfinished line.
RowNumbers numbersOf(const ReadingPosition &position, std::size_t lines) {
    const FileStatus &status = position.status;
    return {static_cast<std::int64_t>(status.device),
            static_cast<std::int64_t>(status.inode),
            static_cast<std::int64_t>(status.size),
            status.modified.value_or(Instant()).time_since_epoch().count(),
            status.changed.time_since_epoch().count(),
            static_cast<std::int64_t>(position.offset),
            static_cast<std::int64_t>(position.fingerprint),
            static_cast<std::int64_t>(position.entries),
            (position.settled ? 1 : 0) + (lines > position.entries ? 2 : 0)};
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
    position.settled = numbers[8] % 2 != 0;
    position.includesRest = position.offset == position.status.size;
    return position;
}

std::int64_t rowChecksum(const RowNumbers &numbers, std::string_view path, std::int64_t id) {
    std::string bytes(reinterpret_cast<const char *>(numbers.data()),
                      sizeof numbers); // NOLINT: a hash of them
    return checksumOf(bytes.append(path), id);
}

/// Whether a reading from there on has the same lines before it.
bool isSamePlace(const ReadingPosition &a, const ReadingPosition &b) {
    return a.status.device == b.status.device && a.status.inode == b.status.inode && a.offset == b.offset &&
           a.fingerprint == b.fingerprint && a.entries == b.entries;
}

/// Returns the row's bytes. Throws DamagedLedger without a row.
std::string checkedBytes(SQLite::Statement &find, std::int64_t id) {
    StatementUse use(find, id);
    if (!use.next())
        throw DamagedLedger("a row is missing");
    std::string bytes(use.bytes(0));
    if (checksumOf(bytes, id) != use.integer(1))
        throw DamagedLedger("a row is altered");
    return bytes;
}

void storeBytes(SQLite::Statement &replace, std::int64_t id, std::string_view bytes) {
    StatementUse(replace, id, bytes, checksumOf(bytes, id)).run();
}

/// Appends a chunk's entries to the list. The last one may be of a line that was unfinished.
void appendEntries(std::string_view bytes, InternedString session, std::vector<JSONLEntry> &entries) {
    const std::size_t size = entries.size();
    if (!decodeEntries(bytes, session, entries) || entries.size() == size)
        throw DamagedLedger("entries are malformed");
}

/// Appends a chunk's details to the list, which then must have at least that size.
void appendDetails(std::string_view bytes, std::size_t size, std::vector<UsageDetails> &details) {
    if (!decodeDetails(bytes, details) || details.size() < size)
        throw DamagedLedger("details are malformed");
}

} // namespace

struct FileTable::Statements {
    SQLite::Database &database;
    SQLite::Statement findFile{database,
                               "SELECT device, inode, size, modified, changed, position, fingerprint, "
                               "entries, settled, id, checksum FROM file WHERE path = ?"};
    SQLite::Statement replaceFile{database,
                                  "REPLACE INTO file(device, inode, size, modified, changed, position, "
                                  "fingerprint, entries, settled, id, checksum, path) "
                                  "VALUES(?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?, ?)"};
    SQLite::Statement places{database, "SELECT path, inode FROM file"};
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

FileTable::FileTable(SQLite::Database &database)
    : m_statements(new Statements{database}) {}

FileTable::~FileTable() = default;

FileTable::Row FileTable::rowOf(const std::filesystem::path &file) {
    StatementUse find(m_statements->findFile, std::string_view(file.native()));
    if (!find.next())
        return {};
    RowNumbers numbers{};
    int column = 0;
    for (std::int64_t &number : numbers)
        number = find.integer(column++);
    const std::int64_t id = find.integer(column++);
    if (rowChecksum(numbers, file.native(), id) != find.integer(column))
        throw DamagedLedger("a row is altered");
    const ReadingPosition position = positionOf(numbers);
    return {id, position, position.entries + (numbers[8] > 1 ? 1 : 0)};
}

std::optional<StoredReading> FileTable::find(const std::filesystem::path &file, bool withMessages) {
    const Row row = rowOf(file);
    if (row.id == 0)
        return std::nullopt;
    StoredReading reading;
    if (row.position.entries > 0)
        reading.m_session = InternedString(file.stem().native());
    reading.m_position = row.position;
    reading.m_lines = row.lines;
    const std::size_t chunks = (row.position.entries + entriesPerChunk - 1) / entriesPerChunk;
    std::int64_t id = row.id * chunksPerFile;
    for (; reading.m_chunks.size() < chunks; ++id) {
        StoredReading::Chunk &chunk = reading.m_chunks.emplace_back();
        chunk.entries = checkedBytes(m_statements->findChunk, id);
        if (withMessages)
            chunk.details = checkedBytes(m_statements->findDetails, id);
    }
    return reading;
}

LogEntries StoredReading::decode() const {
    auto list = std::make_shared<EntryList>();
    list->reserve(m_lines);
    std::vector<UsageDetails> details;
    for (const Chunk &chunk : m_chunks) {
        appendEntries(chunk.entries, m_session, *list);
        if (chunk.details)
            appendDetails(*chunk.details, list->size(), details);
    }
    if (list->size() < size())
        throw DamagedLedger("entries are missing");
    list->resize(size());
    if (!details.empty())
        list->messages.add(*list, details);
    return list;
}

SessionLines FileTable::linesOf(const std::filesystem::path &file) {
    const Row row = rowOf(file);
    if (row.id == 0)
        throw DamagedLedger("a row is missing");
    SessionLines lines{InternedString(file.stem().native()), {}, {}};
    for (std::int64_t chunk = row.id * chunksPerFile; lines.entries.size() < row.lines; ++chunk) {
        appendEntries(checkedBytes(m_statements->findChunk, chunk), lines.session, lines.entries);
        appendDetails(checkedBytes(m_statements->findDetails, chunk), lines.entries.size(), lines.details);
    }
    lines.entries.resize(row.lines);
    lines.details.resize(row.lines);
    return lines;
}

std::vector<FileTable::Place> FileTable::files() {
    std::vector<Place> files;
    for (StatementUse use(m_statements->places); use.next();)
        files.push_back({std::filesystem::path(use.bytes(0)), static_cast<std::uint64_t>(use.integer(1))});
    return files;
}

bool FileTable::contains(const std::filesystem::path &file) {
    return rowOf(file).id != 0;
}

bool FileTable::isAt(const std::filesystem::path &file, const ReadingPosition &position) {
    const Row row = rowOf(file);
    return row.id != 0 && isSamePlace(row.position, position);
}

void FileTable::keep(const std::filesystem::path &file, const ReadingPosition *continued,
                     const FileReading &reading) {
    std::int64_t id = rowOf(file).id;
    if (continued == nullptr) {
        StatementUse newest(m_statements->newestFile);
        newest.next();
        id = newest.integer(0) + 1;
    }
    std::size_t first = continued != nullptr ? continued->entries : 0;
    auto added = std::span(reading.newDetails);
    while (!added.empty()) {
        const std::size_t begin = first / entriesPerChunk * entriesPerChunk;
        const std::size_t count = std::min(added.size(), begin + entriesPerChunk - first);
        const std::int64_t chunk = id * chunksPerFile + static_cast<std::int64_t>(first / entriesPerChunk);
        std::vector<UsageDetails> details;
        if (first > begin) {
            appendDetails(checkedBytes(m_statements->findDetails, chunk), first - begin, details);
            details.resize(first - begin);
        }
        details.insert(details.end(), added.begin(), added.begin() + static_cast<std::ptrdiff_t>(count));
        first += count;
        storeBytes(m_statements->replaceChunk, chunk,
                   encodeEntries(std::span(*reading.entries).subspan(begin, first - begin)));
        storeBytes(m_statements->replaceDetails, chunk, encodeDetails(details));
        added = added.subspan(count);
    }
    const RowNumbers numbers = numbersOf(reading.position, reading.entries->size());
    StatementUse replace(m_statements->replaceFile);
    int index = 0;
    for (const std::int64_t number : numbers)
        replace.bind(++index, number);
    replace.bind(++index, id);
    replace.bind(++index, rowChecksum(numbers, file.native(), id));
    replace.bind(++index, std::string_view(file.native()));
    replace.run();
}

void FileTable::forget(const std::filesystem::path &file) {
    const std::int64_t id = rowOf(file).id;
    if (id == 0)
        throw DamagedLedger("a row is missing");
    for (SQLite::Statement *statement : {&m_statements->removeChunks, &m_statements->removeDetails})
        StatementUse(*statement, id * chunksPerFile, (id + 1) * chunksPerFile).run();
    StatementUse(m_statements->removeFile, id).run();
}

} // namespace burnwick
