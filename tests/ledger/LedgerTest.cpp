// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerFixture.h"
#include "support/LogCapture.h"

#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::writeFile;

/// What befalls a ledger before it is read again.
enum class Fate { works, isReplaced, staysAsItIs, isNotUsed };
class LedgerCondition;
struct Condition {
    const char *name;
    void (*prepare)(LedgerCondition &);
    const char *line; ///< what the only line in the log contains; null without a line
    Fate fate;
};

std::ostream &operator<<(std::ostream &out, const Condition &condition) {
    return out << condition.name;
}

class LedgerCondition : public LedgerTest, public testing::WithParamInterface<Condition> {
public:
    std::unique_ptr<SQLite::Database> m_other; ///< of another program
};

const std::vector<Condition> conditions{
    {"a known tree", [](LedgerCondition &) {}, nullptr, Fate::works},
    {"no folder", [](LedgerCondition &t) { fs::remove_all(t.m_home.path() / "data"); }, nullptr, Fate::works},
    {"an empty file", [](LedgerCondition &t) { writeFile(t.m_file, ""); }, nullptr, Fate::works},
    {"no folder can be made",
     [](LedgerCondition &t) {
         fs::remove_all(t.m_home.path() / "data");
         writeFile(t.m_home.path() / "data", "a file");
     },
     "not used now: unable to open", Fate::isNotUsed},
    {"no database", [](LedgerCondition &t) { writeFile(t.m_file, std::string(5'000, 'x')); },
     "damaged and moved aside: file is not a database", Fate::isReplaced},
    {"truncated", [](LedgerCondition &t) { fs::resize_file(t.m_file, fs::file_size(t.m_file) / 2); },
     "damaged and moved aside: ", Fate::isReplaced},
    {"version 1",
     [](LedgerCondition &t) {
         t.execute("DROP TABLE kept; DROP TABLE keeping; DROP TABLE limitPart; DROP TABLE edition; "
                   "PRAGMA user_version = 1");
     },
     nullptr, Fate::works},
    {"version 2",
     [](LedgerCondition &t) {
         t.execute("DROP TABLE limitPart; DROP TABLE edition; PRAGMA user_version = 2");
     },
     nullptr, Fate::works},
    {"truncated header", [](LedgerCondition &t) { fs::resize_file(t.m_file, 50); },
     "damaged and moved aside: ", Fate::isReplaced},
    {"version 0", [](LedgerCondition &t) { t.execute("PRAGMA user_version = 0"); },
     "damaged and moved aside: its header", Fate::isReplaced},
    {"a negative version", [](LedgerCondition &t) { t.execute("PRAGMA user_version = -1"); },
     "damaged and moved aside: its header", Fate::isReplaced},
    {"a missing table", [](LedgerCondition &t) { t.execute("DROP TABLE chunk"); },
     "damaged and moved aside: no such table", Fate::isReplaced},
    {"a missing chunk", [](LedgerCondition &t) { t.execute("DELETE FROM chunk WHERE id % 2 = 1"); },
     "damaged and moved aside: a row is missing", Fate::isReplaced},
    {"exchanged chunks",
     [](LedgerCondition &t) {
         t.execute("UPDATE chunk SET entries = (SELECT entries FROM chunk ORDER BY id DESC LIMIT 1)");
     },
     "damaged and moved aside: a row is altered", Fate::isReplaced},
    {"a missing edition",
     [](LedgerCondition &t) {
         t.execute("DELETE FROM edition");
         t.addLog(2);
         t.waitUntilSettled();
     },
     "damaged and moved aside: a row is missing", Fate::isReplaced},
    {"an altered position", [](LedgerCondition &t) { t.execute("UPDATE file SET size = size + 1"); },
     "damaged and moved aside: a row is altered", Fate::isReplaced},
    {"a later version", [](LedgerCondition &t) { t.execute("PRAGMA user_version = 1000"); },
     "not used now: a later version", Fate::staysAsItIs},
    {"a later version that was killed",
     [](LedgerCondition &t) { t.executeAndDie("PRAGMA user_version = 1000"); },
     "not used now: a later version", Fate::staysAsItIs},
    {"foreign", [](LedgerCondition &t) { t.makeForeign(); }, "not used now: it is no ledger",
     Fate::staysAsItIs},
    {"foreign and killed",
     [](LedgerCondition &t) {
         t.makeForeign();
         t.execute("PRAGMA journal_mode = WAL");
         t.executeAndDie("INSERT INTO poem VALUES('a line')");
     },
     "not used now: it is no ledger", Fate::staysAsItIs},
    {"locked",
     [](LedgerCondition &t) {
         t.m_other = std::make_unique<SQLite::Database>(t.m_file.string(), SQLite::OPEN_READWRITE);
         t.m_other->exec("PRAGMA locking_mode = EXCLUSIVE");
         t.m_other->exec("BEGIN EXCLUSIVE");
     },
     "not used now: database is locked", Fate::isNotUsed},
    {"locked for writing",
     [](LedgerCondition &t) {
         t.m_other = std::make_unique<SQLite::Database>(t.m_file.string(), SQLite::OPEN_READWRITE);
         t.m_other->exec("BEGIN IMMEDIATE");
         t.addLog(2);
     },
     "not used now: database is locked", Fate::staysAsItIs},
};

TEST_P(LedgerCondition, FiguresAreRightAtOnceAndTheLogHasOneLine) {
    const auto &[name, prepare, line, fate] = GetParam();
    const bool works = fate == Fate::works || fate == Fate::isReplaced;
    prepare(*this);
    const std::string before = bytesOf(m_file);
    {
        const test::LogCapture log;
        Ledger ledger(m_folder);
        const auto begin = std::chrono::steady_clock::now();
        readWith(ledger);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));
        readWith(ledger);
        EXPECT_EQ(log.lines().size(), line != nullptr ? 1 : 0) << log.lines().join(u'\n').toStdString();
        if (line != nullptr) {
            EXPECT_TRUE(log.lines().join(u'\n').contains(QLatin1String(line)))
                << log.lines().join(u'\n').toStdString();
        }
        for (const std::string &suffix : works ? ledgerSuffixes : std::vector<std::string>())
            EXPECT_EQ(fs::status(m_file.string() + suffix).permissions(), fs::perms(0600)) << suffix;
        EXPECT_EQ(recalled(), works ? logs() : fate == Fate::staysAsItIs && m_other != nullptr ? 3 : 0);
    }
    EXPECT_EQ(fs::exists(m_file.string() + ".damaged"), fate == Fate::isReplaced);
    if (works) {
        EXPECT_EQ(fs::status(m_folder).permissions(), fs::perms(0700));
    } else {
        EXPECT_EQ(bytesOf(m_file), before);
    }
    if (m_other != nullptr) {
        m_other.reset();
        read();
        EXPECT_EQ(recalled(), logs()) << "after the other program has ended";
    }
}

INSTANTIATE_TEST_SUITE_P(Each, LedgerCondition, testing::ValuesIn(conditions));

TEST_F(LedgerTest, AReadOnlyHomeIsLeftAlone) {
    for (const char *path : {"", ".claude", "data"})
        fs::permissions(m_home.path() / path, fs::perms(0755));
    fs::permissions(m_folder, fs::perms(0555));
    fs::permissions(m_file, fs::perms(0444));
    const uid_t user = ::geteuid();
    constexpr uid_t nobody = 65534;
    ASSERT_TRUE(user != 0 || ::seteuid(nobody) == 0);
    const test::LogCapture log;
    read();
    ASSERT_TRUE(user != 0 || ::seteuid(user) == 0);
    fs::permissions(m_folder, fs::perms(0700));
    EXPECT_EQ(log.lines().join(u'\n').count(QStringLiteral("not used now: it cannot be written")), 1);
    EXPECT_EQ(test::entriesOf(m_folder), 1) << "files beside the ledger";
}

TEST_F(LedgerTest, ASeriesWithoutAnEndIsUndone) {
    Ledger ledger(m_folder);
    const auto file = m_home.projects() / "b" / "0.jsonl";
    const test::LogCapture log;
    LogHistory none;
    ledger.recall(none);
    EXPECT_TRUE(ledger.keep(file, nullptr, {std::make_shared<EntryList>(), {statusOf(file)}}));
    readWith(ledger);
    EXPECT_TRUE(log.lines().isEmpty()) << log.lines().join(u'\n').toStdString();
    EXPECT_EQ(recalled(), logs());
}

/// A long file that was not watched since may have been rewritten between the samples that are compared.
TEST_F(LedgerTest, ALongFileThatGrewAfterAnotherProgramReadItIsReadAnew) {
    const auto file = m_home.projects() / "a" / "long.jsonl";
    Ledger ledger(m_folder);
    fs::rename(file, m_home.path() / "away");
    const auto last = m_parser.parseAllEntries(nullptr, &ledger);
    fs::rename(m_home.path() / "away", file);
    readWhenSettled(); // by another program
    std::string bytes = bytesOf(file);
    const std::size_t at = bytes.find("\"input_tokens\":", 6'000);
    ASSERT_LT(at, 9'000U);
    bytes[at + 15] = '9';
    writeFile(file, bytes + test::usageLine("2025-06-03T12:00:00Z", 1, 1));
    const auto history = m_parser.parseChangedEntries(*last, {file}, &ledger);
    const auto fresh = m_parser.parseAllEntries();
    ASSERT_EQ(history->files.size(), fresh->files.size());
    EXPECT_TRUE(*history->entries.back() == *fresh->entries.back());
}

} // namespace
} // namespace burnwick
