// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/FileMonitor.h"

#include "platform/Platform.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <fstream>

#include <sys/ioctl.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::writeFile;

class FileMonitorTest : public testing::Test {
protected:
    FileMonitorTest() { fs::create_directories(watched); }

    FileMonitor monitor() {
        return FileMonitor(
            watched, [this] { ++calls; }, platform::openDirectoryEventSource);
    }
    [[nodiscard]] bool wasCalled(int times) const {
        return waitFor([this, times] { return calls >= times; }) && calls == times;
    }

    test::TemporaryDirectory home;
    fs::path watched = home.path() / "watched";
    int calls = 0;
};

int pendingBytes(const FileMonitor &monitor) {
    int bytes = -1;
    EXPECT_EQ(ioctl(monitor.fileDescriptor(), FIONREAD, &bytes), 0);
    return bytes;
}

std::ptrdiff_t openDescriptors() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

TEST_F(FileMonitorTest, OnlyChangedEntriesCallTheHandlerOnceForAllThatIsPending) {
    using Path = const fs::path &;
    const struct {
        const char *action;
        bool changesEntries;
        void (*perform)(Path watched, Path outside);
    } rows[] = {
        {"create", true, [](Path in, Path) { writeFile(in / "new", "text"); }},
        {"make a directory", true, [](Path in, Path) { fs::create_directory(in / "new"); }},
        {"remove", true, [](Path in, Path) { fs::remove(in / "file"); }},
        {"rename", true, [](Path in, Path) { fs::rename(in / "file", in / "new"); }},
        {"move in", true, [](Path in, Path out) { fs::rename(out / "file", in / "new"); }},
        {"move out", true, [](Path in, Path out) { fs::rename(in / "file", out / "new"); }},
        {"create more than a batch", true,
         [](Path in, Path) {
             for (int i = 0; i < 200; ++i)
                 writeFile(in / std::to_string(i), "");
         }},
        {"append", false, [](Path in, Path) { std::ofstream(in / "file", std::ios::app) << "more"; }},
        {"read", false, [](Path in, Path) { std::ifstream(in / "file").get(); }},
        {"change the mode", false,
         [](Path in, Path) { fs::permissions(in / "file", fs::perms::owner_read); }},
        {"create one below", false, [](Path in, Path) { writeFile(in / "project/new", ""); }},
        {"change elsewhere", false, [](Path, Path out) { writeFile(out / "new", ""); }},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.action);
        calls = 0;
        watched = home.path() / row.action / "watched";
        const fs::path outside = home.path() / row.action / "outside";
        for (const fs::path &file : {watched / "file", watched / "project/log", outside / "file"})
            writeFile(file, "text");
        FileMonitor monitor = this->monitor();
        monitor.start();
        row.perform(watched, outside);
        EXPECT_EQ(pendingBytes(monitor) > 0, row.changesEntries);
        EXPECT_TRUE(wasCalled(row.changesEntries ? 1 : 0));
        EXPECT_EQ(pendingBytes(monitor), 0);
    }
}

TEST_F(FileMonitorTest, StartIgnoresWhatIsNoDirectoryAndASecondStart) {
    FileMonitor monitor = this->monitor();
    monitor.stop();
    fs::remove(watched);
    monitor.start();
    EXPECT_EQ(monitor.fileDescriptor(), -1);
    writeFile(watched, "a file");
    monitor.start();
    EXPECT_EQ(monitor.fileDescriptor(), -1);
    fs::remove(watched);
    fs::create_directory(watched);
    monitor.start();
    writeFile(watched / "new", "");
    monitor.start();
    EXPECT_GT(pendingBytes(monitor), 0) << "the second start replaced the watch";
    EXPECT_TRUE(wasCalled(1));
}

TEST_F(FileMonitorTest, StopAndDestructionCloseTheDescriptor) {
    const auto before = openDescriptors();
    {
        FileMonitor monitor = this->monitor();
        for (int round = 1; round <= 2; ++round) {
            monitor.start();
            writeFile(watched / ("in round " + std::to_string(round)), "");
            EXPECT_TRUE(wasCalled(round));
            writeFile(watched / ("pending in round " + std::to_string(round)), "");
            monitor.stop();
            EXPECT_EQ(monitor.fileDescriptor(), -1);
            QCoreApplication::processEvents();
            EXPECT_EQ(calls, round);
        }
        monitor.start();
        fs::remove_all(watched);
        writeFile(watched, "a file");
        monitor.start();
        fs::remove(watched);
        fs::create_directory(watched);
        monitor.start();
    }
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(FileMonitorTest, ADeletedDirectoryEndsTheWatchUntilTheNextStart) {
    FileMonitor monitor = this->monitor();
    writeFile(watched / "file", "");
    monitor.start();
    fs::remove_all(watched);
    EXPECT_TRUE(wasCalled(1)) << "its last entry was removed";
    fs::create_directory(watched);
    monitor.start();
    writeFile(watched / "file", "");
    EXPECT_TRUE(wasCalled(2));
}

TEST_F(FileMonitorTest, StartWatchesTheDirectoryNowAtThePathAfterAFolderAboveWasMoved) {
    const fs::path above = home.path() / "above";
    watched = above / "watched";
    fs::create_directories(watched);
    FileMonitor monitor = this->monitor();
    monitor.start();
    fs::rename(above, home.path() / "moved");
    fs::create_directories(watched);
    monitor.start();
    writeFile(home.path() / "moved/watched/file", "");
    EXPECT_EQ(pendingBytes(monitor), 0);
    writeFile(watched / "file", "");
    EXPECT_TRUE(wasCalled(1));
    fs::remove_all(above);
    monitor.start();
    EXPECT_EQ(monitor.fileDescriptor(), -1);
}

TEST_F(FileMonitorTest, LostEventsCallTheHandlerAndEndTheWatchUntilTheNextStart) {
    int longestQueue = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> longestQueue;
    if (longestQueue < 1 || longestQueue > 100'000)
        GTEST_SKIP() << "the queue takes " << longestQueue << " events";
    FileMonitor monitor = this->monitor();
    monitor.start();
    for (int i = 0; i <= longestQueue / 2; ++i) {
        writeFile(watched / "file", "");
        fs::remove(watched / "file");
    }
    EXPECT_TRUE(wasCalled(1));
    writeFile(watched / "unseen", "");
    QCoreApplication::processEvents();
    EXPECT_EQ(calls, 1);
    monitor.start();
    writeFile(watched / "another", "");
    EXPECT_TRUE(wasCalled(2));
}

TEST_F(FileMonitorTest, TheHandlerMayStopAndStart) {
    FileMonitor *called = nullptr;
    FileMonitor monitor(
        watched,
        [&] {
            ++calls;
            called->stop();
            called->start();
        },
        platform::openDirectoryEventSource);
    called = &monitor;
    monitor.start();
    for (int round = 1; round <= 2; ++round) {
        writeFile(watched / std::to_string(round), "");
        EXPECT_TRUE(wasCalled(round));
    }
}

} // namespace
} // namespace burnwick
