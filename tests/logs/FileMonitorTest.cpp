// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/FileMonitor.h"

#include "LoggedSource.h"
#include "platform/Platform.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <memory>
#include <string>
#include <thread>

#include <sys/ioctl.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::Counter;
using test::writeFile;

class FileMonitorTest : public testing::Test {
protected:
    FileMonitorTest() { fs::create_directories(watched); }

    std::unique_ptr<FileMonitor> monitorCalling(std::function<void()> onChange) {
        return std::make_unique<FileMonitor>(watched, std::move(onChange), [this](const fs::path &path) {
            auto source = platform::openDirectoryEventSource(path);
            return source ? std::make_unique<test::LoggedSource>(std::move(source), sources) : nullptr;
        });
    }
    /// Its handler counts the call and then waits until it is allowed to return.
    std::unique_ptr<FileMonitor> gatedMonitor() {
        return monitorCalling([this] {
            calls.increment();
            EXPECT_TRUE(allowed.reaches(calls.value()));
            returned.increment();
        });
    }
    std::unique_ptr<FileMonitor> countingMonitor() {
        return monitorCalling([this] { calls.increment(); });
    }

    test::TemporaryDirectory home;
    fs::path watched = home.path() / "watched";
    test::SourceLog sources;
    Counter calls, allowed, returned;
};

int pendingBytes(const FileMonitor &monitor) {
    int bytes = -1;
    EXPECT_EQ(ioctl(monitor.fileDescriptor(), FIONREAD, &bytes), 0);
    return bytes;
}

std::ptrdiff_t openDescriptors() {
    return std::distance(fs::directory_iterator("/proc/self/fd"), fs::directory_iterator());
}

TEST_F(FileMonitorTest, OnlyChangedEntriesCallTheHandler) {
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
        {"append", false, [](Path in, Path) { std::ofstream(in / "file", std::ios::app) << "more"; }},
        {"read", false, [](Path in, Path) { std::ifstream(in / "file").get(); }},
        {"change the mode", false,
         [](Path in, Path) { fs::permissions(in / "file", fs::perms::owner_read); }},
        {"create one below", false, [](Path in, Path) { writeFile(in / "project/new", ""); }},
        {"change elsewhere", false, [](Path, Path out) { writeFile(out / "new", ""); }},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.action);
        watched = home.path() / row.action / "watched";
        const fs::path outside = home.path() / row.action / "outside";
        for (const fs::path &file : {watched / "file", watched / "project/log", outside / "file"})
            writeFile(file, "text");
        const int before = calls.value();
        const auto monitor = gatedMonitor();
        monitor->start();
        // While the handler waits, nothing reads the descriptor, so that it holds exactly the action's
        // events.
        writeFile(watched / "first", "");
        ASSERT_TRUE(calls.reaches(before + 1));
        row.perform(watched, outside);
        EXPECT_EQ(pendingBytes(*monitor) > 0, row.changesEntries);
        if (!row.changesEntries)
            writeFile(watched / "marker", "");
        allowed.increment();
        EXPECT_TRUE(calls.reaches(before + 2));
        EXPECT_EQ(pendingBytes(*monitor), 0) << "one call for all that was pending";
        allowed.increment();
    }
}

TEST_F(FileMonitorTest, StartIgnoresWhatIsNoDirectoryAndASecondStart) {
    const auto monitor = countingMonitor();
    monitor->stop();
    fs::remove(watched);
    monitor->start();
    EXPECT_EQ(monitor->fileDescriptor(), -1);
    writeFile(watched, "a file");
    monitor->start();
    EXPECT_EQ(monitor->fileDescriptor(), -1);
    fs::remove(watched);
    fs::create_directory(watched);
    monitor->start();
    const int descriptor = monitor->fileDescriptor();
    EXPECT_GE(descriptor, 0);
    monitor->start();
    EXPECT_EQ(monitor->fileDescriptor(), descriptor);
    EXPECT_EQ(sources.opened.value(), 1);
    writeFile(watched / "new", "");
    EXPECT_TRUE(calls.reaches(1));
}

TEST_F(FileMonitorTest, StopAndDestructionCloseTheDescriptor) {
    const auto before = openDescriptors();
    auto monitor = countingMonitor();
    for (int round = 1; round <= 3; ++round) {
        monitor->start();
        writeFile(watched / ("in round " + std::to_string(round)), "");
        EXPECT_TRUE(calls.reaches(round));
        monitor->stop();
        monitor->stop();
        ASSERT_TRUE(sources.closed.reaches(round));
        EXPECT_EQ(monitor->fileDescriptor(), -1);
        writeFile(watched / ("between, " + std::to_string(round)), "");
        EXPECT_EQ(calls.value(), round);
    }
    monitor->start();
    monitor->stop();
    monitor->start();
    monitor.reset();
    EXPECT_EQ(platform::openDirectoryEventSource(home.path() / "missing"), nullptr);
    EXPECT_EQ(platform::openDirectoryEventSource(watched / "in round 1"), nullptr);
    EXPECT_EQ(openDescriptors(), before);
}

TEST_F(FileMonitorTest, ADeletedDirectoryEndsTheWatchUntilTheNextStart) {
    const auto monitor = gatedMonitor();
    monitor->start();
    writeFile(watched / "file", "");
    ASSERT_TRUE(calls.reaches(1));
    fs::remove_all(watched);
    allowed.increment();
    EXPECT_TRUE(calls.reaches(2)) << "its last entry was removed";
    allowed.increment();
    ASSERT_TRUE(sources.closed.reaches(1));
    EXPECT_EQ(monitor->fileDescriptor(), -1);
    fs::create_directory(watched);
    monitor->start();
    allowed.increment();
    writeFile(watched / "file", "");
    EXPECT_TRUE(calls.reaches(3));
}

TEST_F(FileMonitorTest, StartWatchesTheDirectoryNowAtThePathAfterAFolderAboveWasMoved) {
    const fs::path above = home.path() / "above";
    watched = above / "watched";
    fs::create_directories(watched);
    const auto monitor = countingMonitor();
    monitor->start();
    fs::rename(above, home.path() / "moved");
    fs::create_directories(watched);
    monitor->start();
    monitor->start();
    EXPECT_TRUE(sources.closed.reaches(1));
    EXPECT_EQ(sources.opened.value(), 2);
    writeFile(home.path() / "moved/watched/file", "");
    EXPECT_EQ(calls.value(), 0);
    writeFile(watched / "file", "");
    EXPECT_TRUE(calls.reaches(1));

    fs::remove_all(above);
    monitor->start();
    EXPECT_TRUE(sources.closed.reaches(2));
    EXPECT_EQ(monitor->fileDescriptor(), -1);
}

TEST_F(FileMonitorTest, LostEventsCallTheHandlerAndEndTheWatchUntilTheNextStart) {
    int longestQueue = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> longestQueue;
    if (longestQueue < 1 || longestQueue > 100'000)
        GTEST_SKIP() << "the queue takes " << longestQueue << " events";
    const auto monitor = gatedMonitor();
    monitor->start();
    writeFile(watched / "first", "");
    ASSERT_TRUE(calls.reaches(1));
    for (int i = 0; i <= longestQueue / 2; ++i) {
        writeFile(watched / "file", "");
        fs::remove(watched / "file");
    }
    for (int i = 0; i <= longestQueue; ++i)
        allowed.increment();
    ASSERT_TRUE(sources.closed.reaches(1));
    const int before = calls.value();
    EXPECT_GT(before, 1);
    monitor->start();
    writeFile(watched / "another", "");
    EXPECT_TRUE(calls.reaches(before + 1));
}

TEST_F(FileMonitorTest, CallsNeverOverlapAcrossStopAndStart) {
    Counter seen;
    FileMonitor witness(
        watched, [&] { seen.increment(); }, platform::openDirectoryEventSource);
    const auto monitor = gatedMonitor();
    monitor->start();
    writeFile(watched / "first", "");
    ASSERT_TRUE(calls.reaches(1));
    monitor->stop();
    EXPECT_GE(monitor->fileDescriptor(), 0) << "closed by its own thread, which is busy";
    monitor->start();
    EXPECT_EQ(sources.opened.value(), 2);
    witness.start();
    writeFile(watched / "second", "");
    ASSERT_TRUE(seen.reaches(1));
    EXPECT_GT(pendingBytes(*monitor), 0);
    EXPECT_EQ(calls.value(), 1) << "another call began while the first one was running";
    allowed.increment();
    EXPECT_TRUE(calls.reaches(2));
    allowed.increment();
}

TEST_F(FileMonitorTest, AChangeDuringStopDoesNotCallTheHandler) {
    const auto monitor = countingMonitor();
    sources.beforeReturning = [&] { monitor->stop(); };
    monitor->start();
    writeFile(watched / "file", "");
    ASSERT_TRUE(sources.closed.reaches(1));
    EXPECT_EQ(calls.value(), 0);
}

TEST_F(FileMonitorTest, DestructionWaitsForTheRunningHandler) {
    auto monitor = gatedMonitor();
    monitor->start();
    writeFile(watched / "first", "");
    ASSERT_TRUE(calls.reaches(1));
    writeFile(watched / "second", "");
    std::thread releaser([this] {
        EXPECT_TRUE(sources.woken.reaches(1)) << "the destructor has begun";
        allowed.increment();
    });
    monitor.reset();
    EXPECT_EQ(returned.value(), 1);
    EXPECT_EQ(calls.value(), 1) << "the pending change is dropped";
    releaser.join();
}

} // namespace
} // namespace burnwick
