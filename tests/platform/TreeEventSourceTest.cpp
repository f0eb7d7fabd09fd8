// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "support/LogCapture.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <QAbstractEventDispatcher>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <utility>

#include <sys/inotify.h>
#include <sys/syscall.h>
#include <unistd.h>

static std::function<int(std::string_view path)> watchError; ///< returns the error of the next watch, or 0

/// Replaces the C library's function in this program, so that tests can make it fail.
extern "C" int inotify_add_watch(int inotify, const char *path, uint32_t mask) noexcept {
    if (watchError && (errno = watchError(path)) != 0)
        return -1;
    return static_cast<int>(syscall(SYS_inotify_add_watch, inotify, path, mask));
}

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using Paths = std::set<fs::path>;

/// Handles the events that have arrived; returns whether there were any.
bool handleEvents() {
    bool hadEvents = false;
    while (QAbstractEventDispatcher::instance()->processEvents(QEventLoop::AllEvents))
        hadEvents = true;
    return hadEvents;
}

struct WatchedTree {
    WatchedTree() {
        run("mkdir -p a/b/c ../out/b/c; echo | tee a/log a/b/c/log ../out/b/c/log; ln -s ../out link");
        open();
    }

    /// Runs a shell in the root.
    void run(const std::string &script) const {
        fs::create_directories(root);
        EXPECT_EQ(std::system(("cd '" + root.string() + "' && { " + script + "; } >/dev/null").c_str()), 0);
    }
    void open() {
        source = platform::openTreeEventSource(roots(), [this] { ++calls; });
        handleEvents();
    }
    [[nodiscard]] std::vector<fs::path> roots() const { return {root, home.path() / "missing"}; }
    [[nodiscard]] bool isAtRoots() const { return source->isAt(roots()); }
    /// Handles events and takes the changes, whose paths become relative to the root.
    TreeChanges changes() {
        handleEvents();
        TreeChanges taken = source->take();
        for (const Paths absolute = std::exchange(taken.files, {}); const fs::path &file : absolute)
            taken.files.insert(file.lexically_relative(root));
        return taken;
    }

    test::TemporaryDirectory home;
    fs::path root = home.path() / "above/root";
    int calls = 0;
    std::unique_ptr<TreeEventSource> source;
};

TEST(TreeEventSourceTest, ReportsFilesInAllFoldersAndAnyChangeOfFolders) {
    constexpr auto everything = std::nullopt;
    const struct {
        const char *action;
        std::optional<Paths> files;
        const char *then = "true";
        Paths filesThen = {};
    } rows[] = {
        {"echo >>a/b/c/log", Paths{"a/b/c/log"}},
        {"echo >new", Paths{"new"}},
        {"echo >'a/\xff'", Paths{"a/\xff"}},
        {"touch a/log", Paths{"a/log"}},
        {"rm a/log", Paths{"a/log"}},
        {"mv ../out/b/c/log a/log", Paths{"a/log"}},
        {"mv a/log log", Paths{"a/log", "log"}},
        {"mv a/log ../out", Paths{"a/log"}},
        {"cat a/log", Paths{}},
        {"echo >>link/b/c/log; echo >>../out/b/c/log", Paths{}},
        {"chmod 700 a", everything},
        {"rm -r a/b", everything, "echo >>a/log", {"a/log"}},
        {"mkdir -p d/e/\xff; echo >d/e/\xff/log", everything, "echo >>d/e/\xff/log", {"d/e/\xff/log"}},
        {"rm -r a; mkdir -p a/b", everything, "echo >>a/b/log", {"a/b/log"}},
        {"mv ../out/b a/in", everything, "echo >>a/in/c/log", {"a/in/c/log"}},
        {"mv a/b ../out/o", everything, "echo >>../out/o/c/log"},
        {"mkdir ab; mv a z", everything, "echo | tee ab/log z/b/c/log", {"ab/log", "z/b/c/log"}},
        {"mkdir n; mv a/b n/b", everything, "echo >>n/b/c/log", {"n/b/c/log"}},
        {"mv a x; mv ../out/b a; mv x ../out", everything, "echo | tee a/c/log ../out/x/log", {"a/c/log"}},
        {"rm -r a; ln -s ../out a", everything, "echo >>a/b/c/log"},
        {"mkdir -p d/b; rm -r d; ln -s ../out d", everything, "echo >>../out/b/log"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.action);
        WatchedTree tree;
        tree.run(row.action);
        const TreeChanges changes = tree.changes();
        EXPECT_EQ(tree.calls, row.files == Paths{} ? 0 : 1);
        EXPECT_EQ(changes.isEverything, row.files == everything);
        EXPECT_EQ(changes.files, row.files.value_or(changes.files));
        tree.changes();
        tree.calls = 0;
        tree.run(row.then);
        EXPECT_EQ(tree.changes().files, row.filesThen);
        EXPECT_EQ(tree.calls, row.filesThen.empty() ? 0 : 1);
        EXPECT_TRUE(tree.isAtRoots() && tree.source->isComplete());
    }
}

TEST(TreeEventSourceTest, AThousandWritesBeforeTakeCallTheHandlerOnceAndDoNotWakeTheEventLoop) {
    WatchedTree tree;
    for (int round = 1; round <= 2; ++round) {
        tree.run("echo >>a/log");
        EXPECT_TRUE(handleEvents());
        tree.run("for i in $(seq 500); do echo >>a/log; echo >>a/b/c/log; done");
        EXPECT_FALSE(handleEvents());
        EXPECT_EQ(tree.calls, round);
        EXPECT_EQ(tree.changes().files, (Paths{"a/log", "a/b/c/log"}));
        EXPECT_FALSE(handleEvents()) << "some events were not taken";
    }
}

TEST(TreeEventSourceTest, LostEventsChangeEverythingAndTheTreeAsItIsNowIsWatched) {
    int longestQueue = 0;
    std::ifstream("/proc/sys/fs/inotify/max_queued_events") >> longestQueue;
    if (longestQueue < 1 || longestQueue > 100'000)
        GTEST_SKIP() << "the queue takes " << longestQueue << " events";
    const std::string rounds = std::to_string(longestQueue / 2 + 1);
    const std::string overflow = "for i in $(seq " + rounds + "); do echo >>a/log; echo >>log; done; ";
    WatchedTree tree;
    tree.run(overflow + "mkdir new; mv a/b ../out/o");
    EXPECT_TRUE(tree.changes().isEverything);
    tree.changes();
    tree.run("echo >>../out/o/c/log");
    EXPECT_FALSE(handleEvents());
    tree.run("echo | tee new/log a/log");
    EXPECT_EQ(tree.changes().files, (Paths{"new/log", "a/log"}));
    EXPECT_TRUE(tree.isAtRoots());
    tree.run(overflow + "mv ../root ../moved; mkdir ../root");
    EXPECT_TRUE(tree.changes().isEverything);
    tree.run("rmdir ../root; mv ../moved ../root");
    EXPECT_FALSE(tree.isAtRoots()) << "it is no longer watched";
}

TEST(TreeEventSourceTest, IsNotAtARootThatWasDeletedOrMovedUntilItIsOpenedAgain) {
    const std::pair<const char *, bool> reported[] = {{"rm -r ../root", true},
                                                      {"mv ../root ../moved", true},
                                                      {"mv ../root ../moved; mv ../moved ../root", true},
                                                      {"mv ../../above ../../moved", false}};
    for (const auto &[action, isReported] : reported) {
        SCOPED_TRACE(action);
        WatchedTree tree;
        tree.run(action);
        EXPECT_EQ(tree.changes().isEverything, isReported);
        fs::create_directories(tree.root);
        EXPECT_FALSE(tree.isAtRoots());
        tree.open();
        EXPECT_TRUE(tree.isAtRoots());
        tree.run("echo >>log");
        EXPECT_EQ(tree.changes().files, Paths{"log"});
    }
}

TEST(TreeEventSourceTest, ALinkMayNameTheRootAndWhatIsNoDirectoryGivesNull) {
    WatchedTree tree;
    tree.root /= "link";
    tree.open();
    tree.run("echo >>b/c/log");
    EXPECT_EQ(tree.changes().files, Paths{"b/c/log"});
    EXPECT_EQ(platform::openTreeEventSource({tree.root / "missing"}, [] {}), nullptr);
    EXPECT_EQ(platform::openTreeEventSource({tree.root / "b/c/log"}, [] {}), nullptr);
}

TEST(TreeEventSourceTest, ManyRootsShareADescriptorAndOneThatEndsLeavesTheOthersWatched) {
    WatchedTree tree;
    std::vector<fs::path> roots;
    for (int i = 0; i < 200; ++i) {
        roots.push_back(tree.home.path() / "above/more" / std::to_string(i));
        fs::create_directories(roots.back() / "sub");
    }
    const auto open = [&] { tree.source = platform::openTreeEventSource(roots, [] {}); };
    const auto descriptors = test::entriesOf("/proc/self/fd");
    open();
    EXPECT_EQ(test::entriesOf("/proc/self/fd"), descriptors);
    for (const auto &[ending, root] :
         {std::pair{"rm -r ../more/7", "../more/7"}, {"mv ../more/8 ../out/b", "../more/8"}}) {
        SCOPED_TRACE(ending);
        tree.run(ending);
        EXPECT_TRUE(tree.changes().isEverything);
        EXPECT_FALSE(tree.source->isAt(roots));
        tree.run("test ! -d ../out/b/8 || echo >>../out/b/8/sub/log; echo >>../more/99/sub/log");
        EXPECT_EQ(tree.changes().files, Paths{"../more/99/sub/log"});
        open();
        EXPECT_TRUE(tree.source->isAt(roots)) << "it is still missing";
        tree.run("mkdir " + std::string(root));
        EXPECT_FALSE(tree.source->isAt(roots));
        open();
    }
}

TEST(TreeEventSourceTest, FoldersThatCannotBeWatchedLeaveTheOthersWatched) {
    const struct {
        int error;
        bool isComplete;
        int warnings;
    } rows[] = {{ENOSPC, false, 1}, {EACCES, false, 0}, {ENOMEM, false, 0}, {ENOENT, true, 0}};
    for (const auto &row : rows) {
        SCOPED_TRACE(std::strerror(row.error));
        WatchedTree tree;
        tree.run("mkdir a/d a/e a/f a/g");
        const test::LogCapture log;
        watchError = [&](std::string_view path) {
            return path.ends_with("/b") || path.ends_with("/d") ? row.error : 0;
        };
        tree.open();
        watchError = nullptr;
        EXPECT_EQ(tree.source->isComplete(), row.isComplete);
        EXPECT_EQ(log.lines().size(), row.warnings);
        tree.run("for folder in . b d e f g; do echo >>a/$folder/log; done");
        EXPECT_EQ(tree.changes().files, (Paths{"a/log", "a/e/log", "a/f/log", "a/g/log"}));
    }
}

TEST(TreeEventSourceTest, TheHandlerMayDestroyTheSourceWhichClosesItsDescriptor) {
    const auto descriptors = test::entriesOf("/proc/self/fd");
    WatchedTree tree;
    tree.source = platform::openTreeEventSource({tree.root}, [&] { tree.source.reset(); });
    tree.run("echo >>a/log");
    EXPECT_TRUE(handleEvents());
    EXPECT_EQ(tree.source, nullptr);
    EXPECT_EQ(test::entriesOf("/proc/self/fd"), descriptors);
}

} // namespace
} // namespace burnwick
