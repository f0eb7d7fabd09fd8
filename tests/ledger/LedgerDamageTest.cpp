// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerFixture.h"
#include "logs/LogFileReader.h"
#include "support/LogCapture.h"

#include <algorithm>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::writeFile;

class LedgerDamage : public LedgerTest, public testing::WithParamInterface<bool> {};

TEST_P(LedgerDamage, AnyAlteredPageOrByteIsHarmless) {
    const Instant begin(std::chrono::hours(485'550));
    const auto record = [&](std::chrono::seconds time) {
        std::vector<Limit> limits;
        for (const char name : {'a', 'b', 'c', 'd', 'e', 'f', 'g', 'h'}) // a page of them
            limits.push_back({Limit::Kind::weeklyScoped, std::string(250, name), 1,
                              begin + std::chrono::hours(50), begin + time});
        return Ledger(m_folder).recordLimits(limits);
    };
    ASSERT_TRUE(record(std::chrono::seconds(0)));
    if (GetParam())
        keepALog();
    const auto closed = contents();
    fs::remove_all(m_folder);
    auto ledger = std::make_unique<Ledger>(m_folder);
    if (GetParam())
        restore(closed);
    ledger->setKeepsHistory(GetParam());
    addLog(2);
    waitUntilSettled();
    readWith(*ledger);
    ASSERT_TRUE(record(std::chrono::seconds(0)));
    const auto killed = contents();
    ledger.reset();
    ASSERT_GT(killed.at("ledger.sqlite-wal").size(), GetParam() ? 10'000U : 30'000U);
    constexpr std::size_t page = 4096;
    constexpr std::size_t step = 149;
    constexpr std::size_t header = 100; // an altered one may be that of a later version
    int moved = 0;
    const auto kept = m_keptLines;
    for (const auto &[intact, name] :
         {std::pair(closed, "ledger.sqlite"), std::pair(killed, "ledger.sqlite-wal")}) {
        const std::size_t size = intact.at(name).size();
        for (std::size_t at = 0; at < size; at += at % page == 0 ? step : std::min(step, page - at % page)) {
            SCOPED_TRACE(std::string("byte ") + std::to_string(at) + " of " + name);
            for (const std::size_t count : {std::size_t{1}, std::min(page, size - at)}) {
                auto files = intact;
                for (std::size_t i = at; i < at + count; ++i)
                    files[name][i] = static_cast<char>(~files[name][i]);
                restore(files);
                const test::LogCapture log;
                m_keptLines = at < header ? std::nullopt : kept;
                const auto samples = record(std::chrono::seconds(1)); // stores nothing new
                EXPECT_TRUE(samples || at < header);
                for (const auto &list : samples.value_or(std::vector<std::vector<LimitSample>>()))
                    EXPECT_TRUE(list.size() == 1 || list.front() == (LimitSample{begin, 1}));
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

INSTANTIATE_TEST_SUITE_P(Ledger, LedgerDamage, testing::Bool(), [](const auto &keeps) {
    return keeps.param ? "WithKeptLines" : "WithoutKeptLines";
});

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
    EXPECT_TRUE(first.keep(file, nullptr, *LogFileReader(LineSelection::usageOnly).readFile(file)));
    first.finish(nullptr);
    EXPECT_EQ(recalled(), logs());
    addLog(2);
    waitUntilSettled();
    readWith(idle);
    EXPECT_EQ(recalled(), logs()) << "the idle program still uses the old file";
    EXPECT_EQ(log.lines().size(), 1) << log.lines().join(u'\n').toStdString();
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
