// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/JSONLParser.h"

#include "logs/HistoryBuilder.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <fstream>
#include <limits>

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

class JSONLParserTest : public testing::Test {
protected:
    [[nodiscard]] JSONLParser parser(unsigned threads = 0) const {
        return JSONLParser(m_home.path(), Calendar::inZone("Europe/Berlin"), m_clock, threads);
    }
    static std::vector<std::int64_t> inputs(const std::vector<JSONLEntry> &entries) {
        std::vector<std::int64_t> result;
        for (const JSONLEntry &entry : entries)
            result.push_back(entry.counts().input);
        return result;
    }

    test::ManualClock m_clock{noon};
    test::LogHome m_home;
};

TEST_F(JSONLParserTest, RecentFilesAreThoseSinceTheSameTimeOfYesterday) {
    // The night between has 25 hours.
    m_clock.set(at("2025-10-26T11:00:00Z"));
    m_home.add("p/old.jsonl", usageLine(noon, 1, 0), at("2025-10-25T09:59:59.999Z"));
    m_home.add("p/just.jsonl", usageLine(noon, 2, 0), at("2025-10-25T10:00:00Z"));
    m_home.add("p/now.jsonl", usageLine(noon, 3, 0), m_clock.now());
    m_home.add("p/future.jsonl", usageLine(noon, 4, 0), m_clock.now() + 5h);

    EXPECT_EQ(inputs(parser().parseRecentEntries()), (std::vector<std::int64_t>{2, 3, 4}));
    const LogHistory history = parser().parseAllEntries();
    EXPECT_EQ(inputs(history.entries), (std::vector<std::int64_t>{1, 2, 3, 4}));
    EXPECT_EQ(history.firstRecent, 1U);
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
        EXPECT_EQ(inputs(parser(threads).parseAllEntries().entries), expected);
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

    const LogHistory history = parser().parseAllEntries();
    EXPECT_EQ(history.fileCount, 7);
    EXPECT_EQ(inputs(history.entries), (std::vector<std::int64_t>{1, 1})); // the log and the link to it
    EXPECT_EQ(inputs(parser().parseRecentEntries()), (std::vector<std::int64_t>{1, 1}));
}

TEST_F(JSONLParserTest, SessionsAreNamedByTheirFilesInTheHistoryOnly) {
    const auto file =
        m_home.add("p/0a1b-2c.x.jsonl", usageLine(noon, 1, 0) + R"({"type":"user"})", m_clock.now());
    EXPECT_EQ(parser().parseAllEntries().entries.at(0).sessionId().view(), "0a1b-2c.x");
    EXPECT_EQ(parser().parseRecentEntries().at(0).sessionId().view(), "");
    const auto every = parser().parseFile(file, true);
    ASSERT_EQ(every.size(), 2U);
    EXPECT_EQ(every[1].sessionId().view(), "0a1b-2c.x");
    EXPECT_EQ(every[1].type().view(), "user");
    EXPECT_EQ(parser().parseFile(file, false).at(0).sessionId().view(), "");
    EXPECT_TRUE(parser().parseFile(m_home.projects() / "missing.jsonl", true).empty());
}

TEST_F(JSONLParserTest, AStopRequestEndsTheReading) {
    m_home.add("a.jsonl", usageLine(noon, 1, 0), m_clock.now());
    std::stop_source stop;
    stop.request_stop();
    EXPECT_TRUE(parser().parseAllEntries(stop.get_token()).entries.empty());
    EXPECT_TRUE(parser().allLogFiles(stop.get_token()).empty());
    EXPECT_TRUE(parser().recentLogFiles(stop.get_token()).empty());
}

TEST_F(JSONLParserTest, OnlyUnsettledFilesAreReadAgainUnlessASettledOneChanged) {
    m_home.add("old.jsonl", usageLine(noon, 1, 0), m_clock.now() - 72h);
    m_home.add("new.jsonl", usageLine(noon, 2, 0), m_clock.now());
    const SettledLogs settled = parser().parseAllEntries().settled;
    EXPECT_EQ(settled.fileCount, 1);
    m_home.add("newer.jsonl", usageLine(noon, 3, 0), m_clock.now() + 1h);
    const auto unsettled = parser().parseUnsettledEntries(settled);
    ASSERT_TRUE(unsettled);
    EXPECT_EQ(unsettled->fileCount, 3);
    EXPECT_EQ(inputs(unsettled->entries), (std::vector<std::int64_t>{2, 3}));
    m_home.add("old.jsonl", usageLine(noon, 4, 0), m_clock.now());
    EXPECT_FALSE(parser().parseUnsettledEntries(settled));
}

TEST_F(JSONLParserTest, AFileTimeBeyondAllInstantsBecomesTheNearest) {
    const auto file = m_home.add("a.jsonl", usageLine(noon, 2, 0), m_clock.now());
    m_home.add("b.jsonl", usageLine(noon, 1, 0), m_clock.now());
    const timespec year2286[] = {{10'000'000'000, 0}, {10'000'000'000, 0}};
    ASSERT_EQ(::utimensat(AT_FDCWD, file.c_str(), year2286, 0), 0);
    EXPECT_EQ(inputs(parser().parseRecentEntries()), (std::vector<std::int64_t>{1, 2}));
    EXPECT_EQ(parser().allLogFiles().back().modified, Instant::max());
}

#if !defined(__SANITIZE_ADDRESS__) && !defined(__SANITIZE_THREAD__) // these need all of the address space
/// Limits the address space of the process to its current size and that many bytes more.
void leaveAddressSpace(std::size_t bytes) {
    std::size_t pages = 0;
    std::ifstream("/proc/self/statm") >> pages;
    const rlim_t most = pages * static_cast<std::size_t>(::sysconf(_SC_PAGESIZE)) + bytes;
    const rlimit limit{most, most};
    ASSERT_EQ(::setrlimit(RLIMIT_AS, &limit), 0);
}

TEST_F(JSONLParserTest, WithoutMemoryForALineOnlyItsFileYieldsNothing) {
    m_home.add("a.jsonl", usageLine(noon, 1, 0), m_clock.now());
    const auto file = m_home.add("b.jsonl", usageLine(noon, 2, 0), m_clock.now());
    std::filesystem::resize_file(file, std::size_t{200} << 20U);
    test::setModified(file, m_clock.now());
    m_home.add("c.jsonl", usageLine(noon, 3, 0), m_clock.now());
    const auto parse = [this](std::size_t megabytes) {
        leaveAddressSpace(megabytes << 20U);
        const auto found = inputs(parser(4).parseAllEntries().entries);
        std::exit(found == std::vector<std::int64_t>{1, 3} ? 0 : 1);
    };
    // The second is too little for the stack of another thread.
    EXPECT_EXIT(parse(60), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(parse(6), testing::ExitedWithCode(0), "");
}
#endif

std::vector<JSONLEntry> entriesOf(const std::string &lines) {
    const test::TemporaryDirectory directory;
    test::writeFile(directory.path() / "x.jsonl", lines);
    const test::ManualClock clock(noon);
    return JSONLParser(directory.path(), Calendar::inZone("UTC"), clock)
        .parseFile(directory.path() / "x.jsonl", false);
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
    builder.add(entries[0]);
    EXPECT_EXIT(builder.add(entries[1]), testing::ExitedWithCode(70), oneLine);
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
