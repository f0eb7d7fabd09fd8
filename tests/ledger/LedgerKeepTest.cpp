// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/LedgerFixture.h"
#include "logs/HistorySums.h"
#include "support/LogCapture.h"

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::usageLine;
using test::writeFile;

/// What befalls a ledger with kept lines and a backup.
struct Misfortune {
    const char *name;
    void (*prepare)(LedgerTest &);
    const char *line;            ///< what the only line in the log contains; null without a line
    std::size_t keptLines = 300; ///< afterwards
};

std::ostream &operator<<(std::ostream &out, const Misfortune &misfortune) {
    return out << misfortune.name;
}

fs::path backupOf(const LedgerTest &test) {
    return test.m_folder / "ledger.backup.sqlite";
}

class LedgerMisfortune : public LedgerTest, public testing::WithParamInterface<Misfortune> {};

const std::vector<Misfortune> misfortunes{
    {"no file", [](LedgerTest &t) { fs::remove(t.m_file); }, nullptr},
    {"no file, and a rest of it",
     [](LedgerTest &t) {
         t.execute("PRAGMA user_version = 3");
         t.executeAndDie("DELETE FROM kept");
         fs::remove(t.m_file);
     },
     nullptr},
    {"an empty file", [](LedgerTest &t) { fs::resize_file(t.m_file, 0); }, nullptr},
    {"no database", [](LedgerTest &t) { writeFile(t.m_file, std::string(5'000, 'x')); }, "moved aside"},
    {"altered kept lines", [](LedgerTest &t) { t.execute("UPDATE kept SET entries = x'00'"); },
     "moved aside"},
    {"kept lines of another session", [](LedgerTest &t) { t.execute("UPDATE kept SET session = x'41'"); },
     "moved aside"},
    {"no file, damaged backup",
     [](LedgerTest &t) {
         fs::remove(t.m_file);
         writeFile(backupOf(t), std::string(5'000, 'x'));
     },
     "backup.sqlite: damaged and moved aside", 0},
    {"no file, altered backup",
     [](LedgerTest &t) {
         fs::remove(t.m_file);
         SQLite::Database(backupOf(t).string(), SQLite::OPEN_READWRITE).exec("UPDATE chunk SET checksum = 0");
     },
     "backup.sqlite: damaged and moved aside", 0},
    {"no file, altered samples in the backup",
     [](LedgerTest &t) {
         fs::remove(t.m_file);
         SQLite::Database(backupOf(t).string(), SQLite::OPEN_READWRITE)
             .exec("INSERT INTO limitPart VALUES(1, 0, x'', 0, x'000000', 0)");
     },
     "backup.sqlite: damaged and moved aside", 0},
    {"damaged file that is due for a backup",
     [](LedgerTest &t) {
         t.execute("UPDATE detail SET checksum = 0");
         test::setModified(backupOf(t), Instant(std::chrono::seconds(1'748'000'000)));
     },
     "moved aside"},
    {"no place for a backup",
     [](LedgerTest &t) {
         fs::remove(backupOf(t));
         fs::create_directory(t.m_folder / "ledger.backup.sqlite.new");
     },
     "without a backup"},
};

TEST_P(LedgerMisfortune, KeptLinesAreCountedAtOnceAndTheLogHasOneLine) {
    const auto &[name, prepare, line, keptLines] = GetParam();
    keepALog();
    ASSERT_TRUE(fs::exists(backupOf(*this)));
    prepare(*this);
    const test::LogCapture log;
    m_keptLines = keptLines;
    Ledger ledger(m_folder);
    ledger.setKeepsHistory(true);
    readWith(ledger);
    readWith(ledger);
    EXPECT_EQ(log.lines().size(), line != nullptr ? 1 : 0) << log.lines().join(u'\n').toStdString();
    if (line != nullptr) {
        EXPECT_TRUE(log.lines().join(u'\n').contains(QLatin1String(line)))
            << log.lines().join(u'\n').toStdString();
    }
    for (const auto &[file, bytes] : contents())
        EXPECT_EQ(fs::status(m_folder / file).permissions(), fs::perms(0600)) << file;
}

INSTANTIATE_TEST_SUITE_P(Each, LedgerMisfortune, testing::ValuesIn(misfortunes));

TEST_F(LedgerTest, TheBackupIsReplacedEachDay) {
    keepALog();
    const auto backup = backupOf(*this);
    const std::string first = bytesOf(backup);
    addLog(2);
    readWhenSettled();
    EXPECT_TRUE(bytesOf(backup) == first);
    using namespace std::chrono_literals;
    for (const auto age : {25h, -25h}) { // the clock may have been set back
        writeFile(backup, "");
        const auto now = std::chrono::time_point_cast<Instant::duration>(std::chrono::system_clock::now());
        test::setModified(backup, now - age);
        read();
        EXPECT_GE(bytesOf(backup).size(), first.size()) << age.count();
    }
}

TEST_F(LedgerTest, LogsThatAreGoneCountInTheHistoryOnlyWhileTheyAreKept) {
    const auto now = Instant(std::chrono::seconds(1'748'900'000));
    const auto figures = [&](Ledger &ledger) {
        const auto history = m_parser.parseAllEntries(nullptr, &ledger);
        const HistorySums sums(*history, Calendar::inZone("UTC"));
        const auto all = sums.within(TimeFilter::all, now);
        const auto week = sums.within(TimeFilter::sevenDays, now);
        return std::vector{all.sessionCount, all.messageCount, week.sessionCount, week.messageCount};
    };
    using Figures = std::vector<std::int64_t>;
    Ledger ledger(m_folder);
    EXPECT_EQ(figures(ledger), (Figures{3, 302, 3, 302}));
    ledger.setKeepsHistory(true);
    EXPECT_EQ(figures(ledger), (Figures{3, 302, 3, 302}));
    // Nothing is lost while settings cannot be read.
    ledger.setKeepsHistory(false);
    fs::remove_all(m_home.projects() / "a");
    EXPECT_EQ(figures(ledger), (Figures{2, 2, 2, 2}));
    ledger.setKeepsHistory(true);
    EXPECT_EQ(figures(ledger), (Figures{3, 302, 3, 302}));
    // A session that has a log again counts once.
    m_home.add("c/long.jsonl", usageLine("2025-06-01T12:00:00.000Z", 900, 1), now);
    EXPECT_EQ(figures(ledger), (Figures{3, 303, 3, 303}));
    // Of two deleted logs of a session with the same lines one counts.
    for (const char *folder : {"d", "e"})
        m_home.add(folder + std::string("/both.jsonl"), usageLine("2025-06-01T12:00:00.000Z", 8, 8), now);
    EXPECT_EQ(figures(ledger), (Figures{5, 305, 4, 305}));
    fs::remove_all(m_home.projects() / "d");
    fs::remove_all(m_home.projects() / "e");
    EXPECT_EQ(figures(ledger), (Figures{4, 304, 4, 304}));
    EXPECT_FALSE(ledger.forgetKeptHistory(false));
    EXPECT_EQ(figures(ledger), (Figures{4, 304, 4, 304}));
    ASSERT_TRUE(ledger.forgetKeptHistory(true));
    EXPECT_EQ(figures(ledger), (Figures{3, 3, 3, 3}));
    ASSERT_TRUE(ledger.forgetKeptHistory(false));
}

TEST_F(LedgerTest, LogsInFoldersThatAProgramDoesNotReadAreNotGoneForIt) {
    const fs::path elsewhere = m_home.path() / "elsewhere";
    m_keepsHistory = true;
    writeFile(elsewhere / "c.jsonl", usageLine("2025-06-02T12:00:00.000Z", 5, 5));
    const JSONLParser both({m_home.projects(), elsewhere}, 1);
    Ledger ledger(m_folder);
    ledger.setKeepsHistory(true);
    EXPECT_EQ(both.parseAllEntries(nullptr, &ledger)->files.size(), 4U);
    m_keptLines = 0;
    read();
    EXPECT_EQ(both.parseAllEntries(nullptr, &ledger)->kept.size(), 0U);
    fs::remove_all(elsewhere);
    read();
    EXPECT_EQ(both.parseAllEntries(nullptr, &ledger)->kept.size(), 1U) << "an unmounted folder is forgotten";
}

/// It has listed the tree before another program read a new log.
TEST_F(LedgerTest, AProgramWithAnOldListOfTheLogsDoublesNothing) {
    Ledger ledger(m_folder);
    Ledger other(m_folder);
    ledger.setKeepsHistory(true);
    other.setKeepsHistory(true);
    auto last = m_parser.parseAllEntries(nullptr, &ledger);
    const auto old = m_parser.parseAllEntries(nullptr, &other);
    addLog(2);
    last = m_parser.parseChangedEntries(*last, {m_home.projects() / "b" / "2.jsonl"}, &ledger);
    ASSERT_EQ(last->kept.size(), 0U);
    LogHistory listed = *old;
    other.recall(listed);
    ASSERT_EQ(other.finish(&listed).value().size(), 1U) << "what it takes for gone";
    if (const auto next = m_parser.parseAllEntries(last.get(), &ledger))
        last = next;
    EXPECT_EQ(last->kept.size(), 0U);
}

TEST_F(LedgerTest, NothingIsLeftOfAForgottenHistory) {
    m_home.add("secret.jsonl", R"({"cwd":"/home/me/hidden-project",)" + usageLine("", 1, 1).substr(1),
               Instant(std::chrono::seconds(1'748'000'000)));
    readWhenSettled();
    fs::remove(m_home.projects() / "secret.jsonl");
    keepALog(301);
    const auto has = [this](std::string_view text) {
        return std::ranges::count_if(
            contents(), [text](const auto &file) { return file.second.find(text) != std::string::npos; });
    };
    EXPECT_EQ(has("hidden-project"), 2) << "the file and its backup";
    // What crashes leave.
    for (const char *copy : {"ledger.sqlite.restored", "ledger.backup.sqlite.new", "ledger.sqlite.damaged"})
        fs::copy_file(m_file, m_folder / copy);
    {
        Ledger ledger(m_folder);
        ASSERT_TRUE(ledger.forgetKeptHistory(true));
        EXPECT_EQ(has("hidden-project"), 0);
    }
    m_keptLines = 0;
    read();
    ASSERT_TRUE(Ledger(m_home.path() / "nowhere").forgetKeptHistory(true));
    EXPECT_FALSE(fs::exists(m_home.path() / "nowhere"));
}

TEST_F(LedgerTest, ImportedLinesCountOnce) {
    keepALog();
    std::vector<SessionLines> exported;
    Ledger first(m_folder);
    first.setKeepsHistory(true);
    const auto use = [&](const SessionLines &lines) { exported.push_back(lines); };
    EXPECT_FALSE(first.exportLines(use)) << "before the logs were read";
    readWith(first);
    ASSERT_TRUE(first.exportLines(use));
    const auto import = [&](const fs::path &folder) {
        Ledger ledger(folder);
        ledger.setKeepsHistory(true);
        readWith(ledger);
        return ledger.importLines(exported);
    };
    EXPECT_EQ(import(m_folder), 0U);
    fs::remove_all(m_folder);
    m_keptLines = 0;
    EXPECT_EQ(import(m_folder), 300U) << "two sessions have logs";
    m_keptLines = 300;
    EXPECT_EQ(import(m_folder), 0U);
    fs::remove(m_file);
    read(); // the backup
    // An import counts although its backup fails.
    fs::remove_all(m_folder);
    fs::create_directories(m_folder / "ledger.backup.sqlite.new");
    m_keptLines = 0;
    const test::LogCapture log;
    EXPECT_EQ(import(m_folder), 300U);
}

/// Otherwise lines that only one of them knows would be lost with the log.
TEST_F(LedgerTest, LinesAreKeptThatAProgramReadAfterAnotherOne) {
    m_keepsHistory = true;
    Ledger ledger(m_folder);
    ledger.setKeepsHistory(true);
    auto last = m_parser.parseAllEntries(nullptr, &ledger);
    std::string lines;
    for (int i = 0; i < 3; ++i) {
        const auto file = m_home.add("b/0.jsonl",
                                     bytesOf(m_home.projects() / "b" / "0.jsonl") +
                                         usageLine("2025-06-02T12:00:00.000Z", 50 + i, 7),
                                     Instant(std::chrono::seconds(1'748'200'000 + i)));
        if (i == 1)
            readWhenSettled(); // by another program
        last = m_parser.parseChangedEntries(*last, {file}, &ledger);
    }
    fs::remove(m_home.projects() / "b" / "0.jsonl");
    m_keptLines = 4;
    read();
}

} // namespace
} // namespace burnwick
