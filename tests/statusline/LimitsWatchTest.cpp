// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "statusline/LimitsWatch.h"

#include "platform/Platform.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

struct LimitsWatchTest : testing::Test {
    /// Waits until the handler has got the percentage; records it before in the folder.
    bool announces(double percent, const fs::path &in) {
        EXPECT_TRUE(LatestLimits(in).record(
            std::vector{Limit{Limit::Kind::session, {}, percent, clock.now() + 1h, clock.now()}}));
        return announces(percent);
    }
    bool announces(double percent) {
        return waitFor([&] { return announced == percent; }, 1s);
    }

    test::TemporaryDirectory home;
    fs::path folder = home.path() / "local" / "share" / "burnwick";
    test::ManualClock clock{"2026-11-18T11:06:40Z"};
    double announced = -1;
    int calls = 0;
    LimitsWatch watch{folder, clock, platform::openDirectoryEventSource, [this](const auto &limits) {
                          announced = limits.front().usedPct;
                          ++calls;
                      }};
};

TEST_F(LimitsWatchTest, AnnouncesAFileThatExistsAndEachReplacement) {
    EXPECT_TRUE(LatestLimits(folder).record(
        std::vector{Limit{Limit::Kind::session, {}, 1, clock.now() + 1h, clock.now()}}));
    watch.check();
    EXPECT_EQ(announced, 1);
    EXPECT_TRUE(announces(2, folder));
    test::writeFile(folder / "ledger.sqlite", "another file");
    test::writeFile(folder / "limits.json", "garbage");
    EXPECT_TRUE(announces(3, folder));
    EXPECT_EQ(calls, 3);
}

TEST_F(LimitsWatchTest, FollowsAFolderThatAppearsMovesAndIsDeleted) {
    watch.check();
    EXPECT_TRUE(announces(1, folder)) << "three folders were missing";
    EXPECT_TRUE(announces(2, folder));

    fs::rename(folder, home.path() / "moved");
    EXPECT_TRUE(announces(3, folder));
    EXPECT_TRUE(announces(4, folder));

    EXPECT_TRUE(LatestLimits(home.path() / "other")
                    .record(std::vector{Limit{Limit::Kind::session, {}, 5, clock.now() + 1h, clock.now()}}));
    fs::rename(folder, home.path() / "moved again");
    fs::rename(home.path() / "other", folder);
    EXPECT_TRUE(announces(5));

    fs::remove_all(home.path() / "local");
    EXPECT_TRUE(announces(6, folder)) << "the folders above were deleted, too";
    EXPECT_TRUE(announces(7, folder));
    EXPECT_EQ(calls, 7);
}

} // namespace
} // namespace burnwick
