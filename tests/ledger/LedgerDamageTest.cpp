// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerFixture.h"
#include "support/LogCapture.h"

#include <algorithm>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::writeFile;

TEST_F(LedgerTest, AnyAlteredPageOrByteIsHarmless) {
    const auto closed = contents();
    fs::remove_all(m_folder);
    auto ledger = std::make_unique<Ledger>(m_folder);
    readWith(*ledger);
    const auto killed = contents();
    ledger.reset();
    ASSERT_GT(killed.at("-wal").size(), 30'000U);
    constexpr std::size_t page = 4096;
    constexpr std::size_t step = 149;
    constexpr std::size_t header = 100; // an altered one may be that of a later version
    int moved = 0;
    for (const auto &[intact, suffix] : {std::pair(closed, ""), std::pair(killed, "-wal")}) {
        const std::size_t size = intact.at(suffix).size();
        for (std::size_t at = 0; at < size; at += at % page == 0 ? step : std::min(step, page - at % page)) {
            SCOPED_TRACE(std::string("byte ") + std::to_string(at) + suffix);
            for (const std::size_t count : {std::size_t{1}, std::min(page, size - at)}) {
                auto files = intact;
                for (std::size_t i = at; i < at + count; ++i)
                    files[suffix][i] = static_cast<char>(~files[suffix][i]);
                restore(files);
                const test::LogCapture log;
                read();
                read();
                EXPECT_LE(log.lines().size(), at < header ? 2 : 1) << log.lines().join(u'\n').toStdString();
                EXPECT_TRUE(at < header || recalled() == logs());
                moved += static_cast<int>(fs::exists(m_file.string() + ".damaged"));
                if (at % page != 0)
                    break; // whole pages only
            }
        }
    }
    EXPECT_GT(moved, 20);
}

TEST_F(LedgerTest, ANewLedgerIsNotMovedAsideForADamagedOneThatWasInItsPlace) {
    Ledger first(m_folder);
    Ledger idle(m_folder);
    readWith(idle);
    LogHistory none;
    first.recall(none);
    execute("DROP TABLE chunk");
    const test::LogCapture log;
    read(); // another program
    read();
    ASSERT_EQ(recalled(), logs());
    const auto file = m_home.projects() / "b" / "0.jsonl";
    first.keep(file, nullptr, {std::make_shared<std::vector<JSONLEntry>>(1), {statusOf(file), 1, 1, 1}});
    EXPECT_EQ(recalled(), logs());
    addLog(2);
    waitUntilSettled();
    readWith(idle);
    EXPECT_EQ(recalled(), logs()) << "the idle program still uses the old file";
    EXPECT_EQ(log.lines().size(), 2);
}

TEST_F(LedgerTest, LogsThatAreGoneAreForgotten) {
    fs::remove(m_home.projects() / "a" / "long.jsonl");
    read();
    SQLite::Database database(m_file.string());
    for (const char *table : {"file", "chunk", "detail"})
        EXPECT_EQ(database.execAndGet(std::string("SELECT count(*) FROM ") + table).getInt(), 2) << table;
}

} // namespace
} // namespace burnwick
