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
#include <vector>

namespace burnwick {

/// The ledger's tables of existing logs. Each row carries a checksum, because SQLite does not notice altered
/// contents. All operations throw SQLite::Exception and DamagedLedger. For one thread at a time.
class FileTable final {
public:
    /// The database must outlive the object.
    explicit FileTable(SQLite::Database &database);
    ~FileTable();

    /// Returns the file's reading without new details; null if it is unknown.
    [[nodiscard]] std::optional<FileReading> find(const std::filesystem::path &file);
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
    void appendEntries(std::int64_t chunk, InternedString session, std::vector<JSONLEntry> &entries);
    void appendDetails(std::int64_t chunk, std::size_t size, std::vector<UsageDetails> &details);

    std::unique_ptr<Statements> m_statements;
};

} // namespace burnwick
