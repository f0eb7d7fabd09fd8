// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ledger/Ledger.h"
#include "logs/JSONLParser.h"
#include "support/LogTreeFixture.h"
#include "support/SettledLogs.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <map>
#include <optional>

namespace burnwick {

/// A ledger's files.
inline const std::vector<std::string> ledgerSuffixes{"", "-wal", "-shm"};

/// A home with logs that the ledger in its data folder knows.
struct LedgerTest : testing::Test {
    LedgerTest() {
        std::string lines;
        for (int i = 0; i < 300; ++i) // more than a chunk
            lines += test::usageLine("2025-06-01T12:00:00.000Z", i, 1'000 - i);
        m_home.add("a/long.jsonl", lines, Instant(std::chrono::seconds(1'748'000'000)));
        addLog(0);
        addLog(1);
        readWhenSettled();
    }

    void addLog(int number) const {
        m_home.add("b/" + std::to_string(number) + ".jsonl",
                   test::usageLine("2025-06-02T12:00:00.000Z", number, 7),
                   Instant(std::chrono::seconds(1'748'100'000 + number)));
    }
    /// Reads the logs as a new program does, and compares with a reading without the ledger.
    void read() const {
        Ledger ledger(m_folder);
        ledger.setKeepsHistory(m_keepsHistory);
        readWith(ledger);
    }
    /// Removes the long log, whose lines a new program keeps from then on.
    void keepALog(std::size_t keptLines = 300) {
        m_keepsHistory = true;
        std::filesystem::remove(m_home.projects() / "a" / "long.jsonl");
        m_keptLines = keptLines;
        read();
    }
    void waitUntilSettled() const { test::waitUntilSettled(m_home.projects()); }
    void readWhenSettled() const {
        waitUntilSettled();
        read();
    }
    void readWith(Ledger &ledger) const {
        const auto history = m_parser.parseAllEntries(nullptr, &ledger);
        const auto fresh = m_parser.parseAllEntries();
        ASSERT_EQ(history->entries.size(), fresh->entries.size());
        for (std::size_t i = 0; i < fresh->entries.size(); ++i)
            EXPECT_EQ(*history->entries[i], *fresh->entries[i]) << fresh->files[i].path;
        std::size_t kept = 0;
        for (const LogEntries &list : history->kept)
            kept += list->size();
        EXPECT_EQ(kept, m_keptLines.value_or(kept));
    }
    /// Returns how many of the logs a new program need not read.
    [[nodiscard]] std::ptrdiff_t recalled() const {
        LogHistory history;
        history.files = allLogFiles({m_home.projects()});
        history.entries.resize(history.files.size());
        history.positions.resize(history.files.size());
        Ledger(m_folder).recall(history);
        std::ptrdiff_t known = 0;
        for (std::size_t i = 0; i < history.files.size(); ++i)
            known +=
                history.entries[i] != nullptr && isUnchanged(history.positions[i], history.files[i].status);
        return known;
    }
    [[nodiscard]] std::ptrdiff_t logs() const { return std::ssize(allLogFiles({m_home.projects()})); }

    void execute(const char *sql) const {
        SQLite::Database(m_file.string(), SQLite::OPEN_READWRITE).exec(sql);
    }
    /// Executes it in a program that is killed afterwards, so that it stands in the file beside only.
    void executeAndDie(const char *sql) const {
        SQLite::Database database(m_file.string(), SQLite::OPEN_READWRITE);
        database.exec(sql);
        const auto files = contents();
        database = SQLite::Database(":memory:");
        restore(files);
    }
    void makeForeign() const {
        std::filesystem::remove(m_file);
        SQLite::Database(m_file.string(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE)
            .exec("CREATE TABLE poem(line)");
    }
    /// Returns the contents of the folder's files by their names, except for that which SQLite makes anew.
    [[nodiscard]] std::map<std::string, std::string> contents() const {
        std::map<std::string, std::string> files;
        for (const auto &file : std::filesystem::directory_iterator(m_folder)) {
            if (file.is_regular_file() && file.path().extension() != ".sqlite-shm")
                files[file.path().filename()] = test::bytesOf(file.path());
        }
        return files;
    }
    void restore(const std::map<std::string, std::string> &files) const {
        std::filesystem::remove_all(m_folder);
        for (const auto &[name, bytes] : files) {
            test::writeFile(m_folder / name, bytes);
            std::filesystem::permissions(m_folder / name, std::filesystem::perms(0600));
        }
    }

    const test::LogHome m_home;
    const std::filesystem::path m_folder = m_home.path() / "data" / "burnwick";
    const std::filesystem::path m_file = m_folder / "ledger.sqlite";
    const JSONLParser m_parser{m_home.path(), 1};
    bool m_keepsHistory = false;
    std::optional<std::size_t> m_keptLines = 0; ///< expected; null for any number
};

} // namespace burnwick
