// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/LedgerFile.h"
#include "ledger/SessionLines.h"
#include "logs/ReadingStore.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace burnwick {

/// A reading as it is stored, because decoding takes longer than finding it.
class StoredReading final {
public:
    [[nodiscard]] const ReadingPosition &position() const noexcept { return m_position; }
    [[nodiscard]] std::size_t size() const noexcept { return m_position.entries; }
    /// Returns the usage lines up to the position. Throws DamagedLedger. Safe from any thread.
    [[nodiscard]] LogEntries decode() const;

private:
    friend class FileTable;
    struct Chunk {
        std::string entries;
        std::optional<std::string> details;
    };

    InternedString m_session;
    ReadingPosition m_position;
    std::size_t m_lines = 0; ///< with an unfinished one
    std::vector<Chunk> m_chunks;
};

/// The ledger's tables of existing logs. Each row carries a checksum, because SQLite does not notice altered
/// contents. All operations throw SQLite::Exception and DamagedLedger. For one thread at a time.
class FileTable final {
public:
    /// The database must outlive the object.
    explicit FileTable(SQLite::Database &database);
    ~FileTable();

    /// Returns the file's reading, whose messages can be left out; null if it is unknown.
    [[nodiscard]] std::optional<StoredReading> find(const std::filesystem::path &file, bool withMessages);
    [[nodiscard]] bool contains(const std::filesystem::path &file);
    /// Returns a known file's lines with their details.
    [[nodiscard]] SessionLines linesOf(const std::filesystem::path &file);

    struct Place {
        std::filesystem::path path;
        std::uint64_t inode;
    };
    /// Returns all files.
    [[nodiscard]] std::vector<Place> files();

    /// Whether a reading that began at that position can be stored.
    [[nodiscard]] bool isAt(const std::filesystem::path &file, const ReadingPosition &position);

    // These need an open transaction.

    /// See ReadingStore::keep(). The reading must begin at the begin of an unknown file, or at the stored
    /// position.
    void keep(const std::filesystem::path &file, const ReadingPosition *continued,
              const FileReading &reading);
    /// Forgets a known file.
    void forget(const std::filesystem::path &file);

private:
    struct Row {
        std::int64_t id = 0; ///< 0 if unknown
        ReadingPosition position;
        std::size_t lines = 0; ///< with an unfinished one
    };
    struct Statements;

    Row rowOf(const std::filesystem::path &file);

    std::unique_ptr<Statements> m_statements;
};

} // namespace burnwick
