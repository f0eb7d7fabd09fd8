// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/UsageCounters.h"

#include "support/LogCapture.h"
#include "support/LogTreeFixture.h"

#include <SQLiteCpp/SQLiteCpp.h>
#include <gtest/gtest.h>

#include <limits>

#include <sys/stat.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using Cells = std::vector<UsageCell>;

constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();

std::chrono::sys_days dayOf(int day) {
    return std::chrono::sys_days(std::chrono::days(20'000 + day));
}

/// A cell with that input and one message; day 0 is none.
UsageCell cell(int day, const char *model, std::int64_t input, std::uint64_t message = 0,
               const char *project = "") {
    UsageCell cell{{}, project, model, message, {input, 0, 0, 0, 0, 1, 0, 0}};
    if (day > 0)
        cell.day = dayOf(day);
    return cell;
}

std::int64_t inputOf(const Cells &sums, std::string_view model) {
    std::int64_t input = 0;
    for (const UsageCell &sum : sums) {
        EXPECT_EQ(sum.day, std::nullopt);
        input += sum.model == model ? sum.counts[UsageCell::input] : 0;
    }
    return input;
}

TEST(UsageCountersTest, WhatWasCountedStaysAndNothingIsCountedTwice) {
    const test::TemporaryDirectory directory;
    const struct {
        const char *what;
        int singlySince;
        Cells cells;
        std::int64_t a, b;
    } rows[] = {
        {"nothing yet", 2, {}, 0, 0},
        {"a day and two messages",
         2,
         {cell(1, "a", 9), cell(2, "a", 5, 1), cell(2, "a", 1, 2), cell(0, "b", 7)},
         15,
         7},
        {"a message has grown",
         2,
         {cell(1, "a", 9), cell(2, "a", 5, 1), cell(2, "a", 2, 2), cell(0, "b", 7)},
         16,
         7},
        {"a day and a message are gone", 2, {cell(2, "a", 2, 2)}, 16, 7},
        {"a new message after a loss", 2, {cell(2, "a", 3, 3)}, 19, 7},
        {"all messages are back", 2, {cell(2, "a", 5, 1), cell(2, "a", 2, 2), cell(2, "a", 3, 3)}, 19, 7},
        {"the day is over",
         3,
         {cell(1, "a", 9), cell(2, "a", 10), cell(3, "a", 1, 1), cell(0, "b", 7)},
         20,
         7},
        {"a day has shrunk", 3, {cell(1, "a", 9), cell(2, "a", 4), cell(3, "a", 1, 1)}, 20, 7},
        {"a line of an old day came late", 3, {cell(2, "a", 12), cell(3, "a", 1, 1)}, 22, 7},
        {"the clock was ahead", 5, {cell(3, "a", 1)}, 22, 7},
        {"and is right again", 2, {cell(2, "a", 7, 1), cell(2, "a", 4, 4), cell(3, "a", 1, 1)}, 22, 7},
        {"a message has moved to another day", 6, {cell(6, "a", 8, 6)}, 30, 7},
        {"and back", 6, {cell(7, "a", 8, 6)}, 30, 7},
        {"all is gone", 9, {}, 30, 7},
    };
    for (const auto &row : rows) {
        // As another program, and again by the same one.
        UsageCounters counters(directory.path() / "a" / "b");
        for (int times = 0; times < 2; ++times) {
            const Cells sums = counters.raise(row.cells, false, dayOf(row.singlySince));
            EXPECT_EQ(inputOf(sums, "a"), row.a) << row.what;
            EXPECT_EQ(inputOf(sums, "b"), row.b) << row.what;
        }
    }
    UsageCounters counters(directory.path() / "a" / "b");
    EXPECT_EQ(
        counters.raise({cell(1, "a", 3, 0, "/p"), cell(2, "a", 3, 0, "/q"), cell(3, "a", 3, 1, "/p")}, true,
                       dayOf(3)),
        (Cells{{{}, "/p", "a", 0, {6, 0, 0, 0, 0, 2, 0, 0}}, {{}, "/q", "a", 0, {3, 0, 0, 0, 0, 1, 0, 0}}}));
    EXPECT_EQ(inputOf(counters.raise({}, false, dayOf(3)), "a"), 30) << "projects are counted apart";
    EXPECT_EQ(counters.raise({cell(3, "a", 3, 1, "/moved")}, true, dayOf(3)).size(), 2U)
        << "as another project";
    const Cells huge{cell(1, "c", most), cell(2, "c", most)};
    EXPECT_EQ(inputOf(counters.raise(huge, false, dayOf(3)), "c"), most);
}

TEST(UsageCountersTest, ADamagedFileIsMovedAsideAndAnUnusableOneIsAnError) {
    const test::TemporaryDirectory directory;
    const fs::path file = directory.path() / "counters.sqlite";
    UsageCounters counters(directory.path());
    UsageCounters other(directory.path());
    const std::string key = counters.key();
    EXPECT_EQ(key.size(), 32U);
    EXPECT_EQ(other.key(), key);
    EXPECT_EQ(inputOf(counters.raise({cell(1, "a", 10)}, false, dayOf(1)), "a"), 10);
    EXPECT_EQ(inputOf(other.raise({cell(1, "a", 20)}, false, dayOf(1)), "a"), 20);
    EXPECT_EQ(inputOf(counters.raise({}, false, dayOf(1)), "a"), 20);
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);

    SQLite::Database(file.string(), SQLite::OPEN_READWRITE).exec("PRAGMA user_version = 2");
    const std::string laterBytes = test::bytesOf(file);
    EXPECT_THROW(static_cast<void>(UsageCounters(directory.path()).key()), std::runtime_error);
    EXPECT_EQ(test::bytesOf(file), laterBytes) << "of a later version";

    test::writeFile(file, std::string(5'000, 'x'));
    const test::LogCapture log;
    UsageCounters later(directory.path());
    EXPECT_EQ(inputOf(later.raise({cell(1, "a", 3)}, false, dayOf(1)), "a"), 3);
    ASSERT_EQ(log.lines().size(), 1);
    EXPECT_TRUE(log.lines().first().contains(u"counters.sqlite: damaged and moved aside"));
    EXPECT_TRUE(fs::exists(directory.path() / "counters.sqlite.damaged"));
    EXPECT_NE(later.key(), key);

    fs::remove(file);
    fs::create_directory(file);
    EXPECT_THROW(static_cast<void>(UsageCounters(directory.path()).raise({}, false, dayOf(1))),
                 std::runtime_error);
}

} // namespace
} // namespace burnwick
