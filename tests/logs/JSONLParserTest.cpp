// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLParser.h"

#include "logs/HistoryBuilder.h"
#include "logs/LogFileReader.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"
#include "support/SettledLogs.h"

#include <gtest/gtest.h>

#include <fstream>
#include <functional>
#include <limits>
#include <set>
#include <thread>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::usageLine;

constexpr auto noon = "2025-06-01T12:00:00.000Z";

std::vector<std::int64_t> inputs(const LogHistory &history) {
    std::vector<std::int64_t> result;
    for (const LogEntries &entries : history.entries) {
        for (const JSONLEntry &entry : entries != nullptr ? *entries : EntryList())
            result.push_back(entry.counts().input);
    }
    return result;
}

class JSONLParserTest : public testing::Test {
protected:
    [[nodiscard]] JSONLParser parser(unsigned threads = 0) const {
        return JSONLParser(m_home.path(), threads);
    }

    test::ManualClock m_clock{noon};
    test::LogHome m_home;
};

TEST_F(JSONLParserTest, RecentFilesAreThoseSinceAnInstant) {
    const Instant since = m_clock.now() - 24h;
    m_home.add("p/old.jsonl", usageLine(noon, 1, 0), since - 1ns);
    m_home.add("p/just.jsonl", usageLine(noon, 2, 0), since);
    m_home.add("p/now.jsonl", usageLine(noon, 3, 0), m_clock.now());
    m_home.add("p/future.jsonl", usageLine(noon, 4, 0), m_clock.now() + 5h);
    EXPECT_EQ(inputs(*parser().parseRecentEntries(since)), (std::vector<std::int64_t>{2, 3, 4}));
    const auto history = parser().parseAllEntries();
    EXPECT_EQ(inputs(*history), (std::vector<std::int64_t>{1, 2, 3, 4}));
    EXPECT_EQ(history->entriesSince(since).size(), 3U);
}

TEST_F(JSONLParserTest, FilesAreOrderedByTimeThenByPathAndLinesAsWritten) {
    const Instant earlier = m_clock.now() - 3h;
    m_home.add("b/x.jsonl", usageLine(noon, 5, 0) + usageLine(noon, 6, 0), m_clock.now());
    m_home.add("b/c/deep/er/y.jsonl", usageLine(noon, 2, 0), earlier);
    m_home.add("B/z.jsonl", usageLine(noon, 1, 0), earlier);
    m_home.add("top.jsonl", usageLine(noon, 3, 0), earlier);
    m_home.add(".hidden/h.jsonl", usageLine(noon, 4, 0), earlier + 1ns);
    for (const char *other : {"a.JSONL", "b.json", "c.jsonl.bak", ".jsonl", "jsonl", "d.jsonl "})
        m_home.add(other, usageLine(noon, 0, 0), m_clock.now());
    std::vector<std::int64_t> expected{1, 2, 3, 4, 5, 6};
    // Sizes that differ widely, so that threads do the files out of order.
    for (int i = 7; i < 200; ++i) {
        const std::string filler(static_cast<std::size_t>(i % 7) * 20'000, ' ');
        m_home.add("p/" + std::to_string(i) + ".jsonl", filler + "\n" + usageLine(noon, i, 0),
                   m_clock.now() + std::chrono::seconds(i));
        expected.push_back(i);
    }
    for (const unsigned threads : {1U, 4U})
        EXPECT_EQ(inputs(*parser(threads).parseAllEntries()), expected);
}

TEST_F(JSONLParserTest, WhatIsNoRegularFileCountsAsFoundAndYieldsNothingAtOnce) {
    const auto projects = m_home.projects();
    const auto log = m_home.add("good.jsonl", usageLine(noon, 1, 0), m_clock.now());
    ASSERT_EQ(::mkfifo((projects / "fifo.jsonl").c_str(), 0600), 0);
    std::filesystem::create_directory(projects / "directory.jsonl");
    std::filesystem::create_symlink("nowhere", projects / "dangling.jsonl");
    std::filesystem::create_symlink("loop.jsonl", projects / "loop.jsonl");
    std::filesystem::create_symlink(log, projects / "link.jsonl");
    std::filesystem::create_symlink("/proc/self/pagemap", projects / "endless.jsonl"); // by its mode a file
    std::filesystem::create_directory_symlink(projects, projects / "directory.jsonl" / "up");

    const auto history = parser().parseAllEntries();
    EXPECT_EQ(history->files.size(), 7U);
    EXPECT_EQ(inputs(*history), (std::vector<std::int64_t>{1, 1})); // the log and the link to it
}

TEST_F(JSONLParserTest, SessionsAreNamedByTheirFiles) {
    m_home.add("p/0a1b-2c.x.jsonl", usageLine(noon, 1, 0), m_clock.now());
    EXPECT_EQ(parser().parseAllEntries()->entries.at(0)->at(0).sessionId().view(), "0a1b-2c.x");
}

TEST_F(JSONLParserTest, AStopRequestEndsTheReading) {
    m_home.add("a.jsonl", usageLine(noon, 1, 0), m_clock.now());
    const StopRequest stop;
    stop.make();
    EXPECT_EQ(parser().parseAllEntries(nullptr, nullptr, stop), nullptr);
    EXPECT_TRUE(allLogFiles({m_home.projects()}, stop).empty());
}

/// Notes what was read.
class ReadingNotes final : public ReadingStore {
public:
    void recall(LogHistory &) override {}
    bool keep(const std::filesystem::path &file, const ReadingPosition *continued,
              const FileReading &) override {
        notes += file.stem().string() + (continued != nullptr ? "+ " : " ");
        return true;
    }
    std::optional<std::vector<LogEntries>> finish(const LogHistory *) override {
        return std::vector<LogEntries>();
    }

    std::string notes;
};

TEST_F(JSONLParserTest, OnlyChangedFilesAreReadAgainAndGrownOnesWhereTheyGrew) {
    const auto add = [this](const char *name, int input, std::chrono::seconds age) {
        const auto file = m_home.add(name, usageLine(noon, input, 0), m_clock.now() - age);
        test::waitUntilSettled(m_home.projects());
        return file;
    };
    const auto a = add("a.jsonl", 1, 10s);
    add("b.jsonl", 2, 10s);
    std::filesystem::create_directory(m_home.projects() / "directory.jsonl");
    ReadingNotes read;
    std::shared_ptr<const LogHistory> last = parser(1).parseAllEntries(nullptr, &read);
    EXPECT_EQ(read.notes, "a b ");
    const struct {
        const char *what;
        std::function<void()> act;
        std::vector<std::int64_t> expected;
        const char *read;
    } rows[] = {
        {"nothing", [] {}, {}, ""},
        {"a new file", [&] { add("c.jsonl", 3, 5s); }, {1, 2, 3}, "c "},
        {"the same in another file", [&] { add("c.jsonl", 3, 5s); }, {1, 2, 3}, "c "},
        {"another time", [&] { test::setModified(a, m_clock.now() - 9s); }, {2, 1, 3}, "a "},
        {"a longer line", [&] { add("c.jsonl", 30, 5s); }, {2, 1, 30}, "c "},
        {"an older file, which comes first", [&] { add("d.jsonl", 4, 20s); }, {4, 2, 1, 30}, "d "},
        {"a removed file", [&] { std::filesystem::remove(m_home.projects() / "d.jsonl"); }, {2, 1, 30}, ""},
        {"a grown file",
         [&] {
             std::ofstream(a, std::ios::app) << usageLine(noon, 5, 0);
             test::setModified(a, m_clock.now() - 9s);
         },
         {2, 1, 5, 30},
         "a+ "},
        {"a shrunk file",
         [&] {
             std::filesystem::resize_file(a, usageLine(noon, 1, 0).size());
             test::setModified(a, m_clock.now() - 9s);
         },
         {2, 1, 30},
         "a "},
    };
    for (const auto &row : rows) {
        read.notes.clear();
        row.act();
        test::waitUntilSettled(m_home.projects());
        const auto history = parser(1).parseAllEntries(last.get(), &read);
        EXPECT_EQ(read.notes, row.read) << row.what;
        EXPECT_EQ(history != nullptr, !row.expected.empty()) << row.what;
        if (history == nullptr)
            continue;
        EXPECT_EQ(inputs(*history), row.expected) << row.what;
        last = history;
    }
}

TEST_F(JSONLParserTest, NamedFilesAloneAreComparedWithTheLastHistory) {
    const auto a = m_home.add("a.jsonl", usageLine(noon, 1, 0), m_clock.now());
    const auto b = m_home.add("b.jsonl", usageLine(noon, 2, 0), m_clock.now());
    test::waitUntilSettled(m_home.projects());
    const auto last = parser().parseAllEntries();
    const auto c = m_home.add("c.jsonl", usageLine(noon, 3, 0), m_clock.now() - 1s);
    m_home.add("b.jsonl", usageLine(noon, 20, 0), m_clock.now());
    std::filesystem::remove(a);
    test::waitUntilSettled(m_home.projects());
    const auto named = [&](const std::set<std::filesystem::path> &files) {
        const auto history = parser().parseChangedEntries(*last, files);
        return history != nullptr ? inputs(*history) : std::vector<std::int64_t>();
    };
    EXPECT_EQ(named({c, m_home.projects() / "c.txt"}), (std::vector<std::int64_t>{3, 1, 2}));
    EXPECT_EQ(named({a, b, c, a / "none.jsonl"}), (std::vector<std::int64_t>{3, 20}));
    EXPECT_EQ(named({}), std::vector<std::int64_t>());
}

TEST_F(JSONLParserTest, AFileTimeBeyondAllInstantsBecomesTheNearest) {
    const auto file = m_home.add("a.jsonl", usageLine(noon, 2, 0), m_clock.now());
    m_home.add("b.jsonl", usageLine(noon, 1, 0), m_clock.now());
    const timespec year2286[] = {{10'000'000'000, 0}, {10'000'000'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), year2286, 0), 0);
    EXPECT_EQ(inputs(*parser().parseRecentEntries(m_clock.now())), (std::vector<std::int64_t>{1, 2}));
    EXPECT_EQ(allLogFiles({m_home.projects()}).back().status.modified, Instant::max());
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // these need all of the address space
/// Limits the address space of the process to its current size and that many bytes more.
void leaveAddressSpace(std::size_t bytes) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlimit limit{pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) + bytes, RLIM_INFINITY};
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &limit), 0);
}

TEST_F(JSONLParserTest, WithoutMemoryForALineOnlyItsFileYieldsNothingAndIsTriedAgain) {
    m_home.add("a.jsonl", usageLine(noon, 1, 0), m_clock.now());
    const auto file = m_home.add("b.jsonl", usageLine(noon, 2, 0), m_clock.now());
    std::filesystem::resize_file(file, std::size_t{200} << 20U);
    test::setModified(file, m_clock.now());
    m_home.add("c.jsonl", usageLine(noon, 3, 0), m_clock.now());
    const auto parse = [this](std::size_t megabytes) {
        leaveAddressSpace(megabytes << 20U);
        const auto history = parser(4).parseAllEntries();
        const rlimit unlimited{RLIM_INFINITY, RLIM_INFINITY};
        ::setrlimit(RLIMIT_AS, &unlimited);
        const auto next = parser(4).parseAllEntries(history.get());
        std::exit(inputs(*history) == std::vector<std::int64_t>{1, 3} && next != nullptr ? 0 : 1);
    };
    // The second is too little for the stack of another thread.
    EXPECT_EXIT(parse(60), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(parse(6), testing::ExitedWithCode(0), "");
}
#endif

/// Returns one list for each line.
std::vector<LogEntries> entriesOf(std::string_view lines) {
    const test::TemporaryDirectory directory;
    LogFileReader reader(LineSelection::all);
    std::vector<LogEntries> entries;
    while (!lines.empty()) {
        const std::size_t size = lines.find('\n') + 1;
        test::writeFile(directory.path() / "x.jsonl", lines.substr(0, size));
        entries.push_back(reader.readFile(directory.path() / "x.jsonl").value().entries);
        lines.remove_prefix(size);
    }
    return entries;
}

TEST(Sums, AnOverflowEndsTheProgramWithOneLine) {
    const auto entries =
        entriesOf(usageLine(noon, std::numeric_limits<long long>::max(), 0) + usageLine(noon, 1, 0));
    const char *oneLine = "^burnwick: the token counts [^\n]*\n$";
    EXPECT_EXIT(static_cast<void>(JSONLParser::calculateSessionTokens(entries)), testing::ExitedWithCode(70),
                oneLine);
    EXPECT_EXIT(static_cast<void>(JSONLParser::calculateBurnRate(entries)), testing::ExitedWithCode(70),
                oneLine);
    HistoryBuilder builder(Calendar::inZone("UTC"));
    builder.add(entries[0]->front());
    EXPECT_EXIT(builder.add(entries[1]->front()), testing::ExitedWithCode(70), oneLine);
    const SessionTokens tokens{std::numeric_limits<std::int64_t>::max(), 0, 1, 0};
    EXPECT_EXIT(static_cast<void>(tokens.total()), testing::ExitedWithCode(70), oneLine);
}

TEST(BurnRate, IsTokensPerMinuteFromTheFirstToTheLastOfTheList) {
    const std::string at0 = usageLine(noon, 100, 50, 9, 9);
    const std::string at5 = usageLine("2025-06-01T12:05:00.0Z", 0, 0);
    const std::string at10 = usageLine("2025-06-01T12:10:00.000Z", 200, 150, 9, 9);
    const struct {
        const char *what;
        std::string lines;
        double rate;
    } rows[] = {
        {"nothing", "", 0},
        {"a single entry", at0, 0},
        {"ten minutes", at0 + at10, 50},
        {"the same instant", at0 + at0, 0},
        {"backwards", at10 + at0, 0},
        {"one without a fraction", at0 + usageLine("2025-06-01T12:10:00Z", 200, 150), 0},
        {"undated ones do not count", at0 + usageLine("?", 999, 0) + at5, 30},
        {"back and forth", at0 + at10 + at0 + at5, 130},
        {"further apart than nanoseconds count",
         usageLine("1678-01-01T00:00:00.0Z", 307'152'000, 0) + usageLine("2261-12-31T00:00:00.0Z", 0, 0), 1},
    };
    for (const auto &row : rows)
        EXPECT_DOUBLE_EQ(JSONLParser::calculateBurnRate(entriesOf(row.lines)), row.rate) << row.what;
}

} // namespace
} // namespace burnwick
