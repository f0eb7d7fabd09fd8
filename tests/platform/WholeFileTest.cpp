// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/WholeFile.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <atomic>
#include <csignal>
#include <fstream>
#include <functional>
#include <iterator>
#include <thread>

#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::TemporaryDirectory;
using test::writeFile;

constexpr std::size_t largest = 1000;
constexpr uid_t otherUser = 65534;

std::string bytesOf(const fs::path &file) {
    std::ifstream in(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

struct stat statusOf(const fs::path &file) {
    struct stat status {};
    EXPECT_EQ(::lstat(file.c_str(), &status), 0) << file;
    return status;
}

mode_t modeOf(const fs::path &file) {
    return statusOf(file).st_mode & 07777U;
}

std::ptrdiff_t entriesOf(const fs::path &folder) {
    return std::distance(fs::directory_iterator(folder), {});
}

/// A file whose replacement fails is still whole, and alone in its folder.
bool isUntouched(const fs::path &file) {
    return bytesOf(file) == "old" && entriesOf(file.parent_path()) == 1;
}

struct File {
    TemporaryDirectory directory;
    fs::path path = directory.path() / "folder" / "file";

    File() { writeFile(path, "old"); }
    [[nodiscard]] fs::path folder() const { return path.parent_path(); }
};

/// Root is stopped by no mode, so become somebody else for a while.
class WithoutPrivileges {
public:
    explicit WithoutPrivileges(const File &file) {
        if (::geteuid() != 0)
            return;
        for (const auto &path : {file.directory.path(), file.folder(), file.path})
            EXPECT_EQ(::chown(path.c_str(), otherUser, otherUser), 0);
        EXPECT_EQ(::seteuid(otherUser), 0);
    }
    ~WithoutPrivileges() { EXPECT_EQ(::seteuid(::getuid()), 0); }
    WithoutPrivileges(const WithoutPrivileges &) = delete;
    WithoutPrivileges &operator=(const WithoutPrivileges &) = delete;
};

/// Writing beyond the size raises SIGXFSZ in the middle of the call and, when the handler returns, fails it.
class FileSizeLimit {
public:
    FileSizeLimit(rlim_t bytes, void (*handler)(int))
        : m_handler(std::signal(SIGXFSZ, handler)) {
        ::getrlimit(RLIMIT_FSIZE, &m_before);
        const rlimit limit{bytes, m_before.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &limit);
    }
    ~FileSizeLimit() {
        ::setrlimit(RLIMIT_FSIZE, &m_before);
        std::signal(SIGXFSZ, m_handler);
    }
    FileSizeLimit(const FileSizeLimit &) = delete;
    FileSizeLimit &operator=(const FileSizeLimit &) = delete;

private:
    rlimit m_before{};
    void (*m_handler)(int);
};

TEST(WholeFile, OnlyRegularFilesUpToTheLimitAreRead) {
    const TemporaryDirectory directory;
    const fs::path &folder = directory.path();
    writeFile(folder / "empty", "");
    writeFile(folder / "full", std::string(largest, 'x'));
    writeFile(folder / "over", std::string(largest + 1, 'x'));
    fs::create_symlink("full", folder / "link");
    fs::create_symlink("loop", folder / "loop");
    fs::create_symlink("nothing", folder / "dangling");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const struct {
        fs::path path;
        std::optional<std::string> bytes;
    } rows[] = {
        {"empty", ""},
        {"full", std::string(largest, 'x')},
        {"link", std::string(largest, 'x')},
        {"over", std::nullopt},
        {"loop", std::nullopt},
        {"dangling", std::nullopt},
        {"pipe", std::nullopt},
        {".", std::nullopt},
        {"full/below", std::nullopt},
        {"/dev/zero", std::nullopt},
        {"/proc/self/mem", std::nullopt}, // regular, but its first byte cannot be read
    };
    for (const auto &row : rows)
        EXPECT_EQ(readWholeFile(folder / row.path, largest), row.bytes) << row.path;
}

TEST(WholeFile, TheNewFileTakesAfterTheOldOne) {
    const mode_t before = ::umask(0);
    for (const mode_t mask : {0U, 0077U, 0777U}) {
        for (const mode_t mode : {0600U, 0644U, 0640U, 0400U, 0666U}) {
            const File file;
            ASSERT_EQ(::chmod(file.path.c_str(), mode), 0);
            const ino_t inode = statusOf(file.path).st_ino;
            ::umask(mask);
            EXPECT_EQ(replaceWholeFile(file.path, "new"), std::error_code());
            ::umask(0);
            EXPECT_EQ(modeOf(file.path), mode);
            EXPECT_EQ(bytesOf(file.path), "new");
            EXPECT_NE(statusOf(file.path).st_ino, inode) << "written in place";
            EXPECT_EQ(entriesOf(file.folder()), 1);
        }
    }
    ::umask(before);
}

TEST(WholeFile, TheOwnerIsKeptOrTheOldFile) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root gives files away";
    const File file;
    ASSERT_EQ(::chown(file.path.c_str(), 1234, 4321), 0);
    ASSERT_EQ(::chmod(file.path.c_str(), 0640), 0);
    EXPECT_EQ(replaceWholeFile(file.path, "new"), std::error_code());
    EXPECT_EQ(statusOf(file.path).st_uid, 1234U);
    EXPECT_EQ(statusOf(file.path).st_gid, 4321U);
    EXPECT_EQ(modeOf(file.path), 0640U);

    const File foreign;
    {
        const WithoutPrivileges somebody(foreign);
        ASSERT_EQ(::seteuid(0), 0);
        ASSERT_EQ(::chown(foreign.path.c_str(), 1234, otherUser), 0);
        ASSERT_EQ(::seteuid(otherUser), 0);
        EXPECT_EQ(replaceWholeFile(foreign.path, "new"), std::errc::operation_not_permitted);
    }
    EXPECT_TRUE(isUntouched(foreign.path));

    // The group of root is not ours to give: then nobody in our own group may read it.
    const File grouped;
    {
        const WithoutPrivileges somebody(grouped);
        ASSERT_EQ(::seteuid(0), 0);
        ASSERT_EQ(::setegid(otherUser), 0);
        ASSERT_EQ(::chown(grouped.path.c_str(), otherUser, 4321), 0);
        ASSERT_EQ(::chmod(grouped.path.c_str(), 0644), 0);
        ASSERT_EQ(::seteuid(otherUser), 0);
        EXPECT_EQ(replaceWholeFile(grouped.path, "new"), std::error_code());
        ASSERT_EQ(::seteuid(0), 0);
        ASSERT_EQ(::setegid(::getgid()), 0);
    }
    EXPECT_EQ(bytesOf(grouped.path), "new");
    EXPECT_EQ(modeOf(grouped.path), 0600U);
}

TEST(WholeFile, LinksStayAndTheirTargetIsReplaced) {
    const TemporaryDirectory directory;
    const fs::path &folder = directory.path();
    writeFile(folder / "dotfiles" / "file", "old");
    fs::create_directory(folder / "home");
    fs::create_symlink("second", folder / "home" / "first");
    fs::create_symlink("../dotfiles/file", folder / "home" / "second");
    EXPECT_EQ(replaceWholeFile(folder / "home" / "first", "new"), std::error_code());
    EXPECT_EQ(bytesOf(folder / "dotfiles" / "file"), "new");
    EXPECT_FALSE(fs::is_symlink(folder / "dotfiles" / "file"));
    EXPECT_EQ(fs::read_symlink(folder / "home" / "first"), "second");
    EXPECT_EQ(fs::read_symlink(folder / "home" / "second"), "../dotfiles/file");
    EXPECT_EQ(entriesOf(folder / "home"), 2);
    EXPECT_EQ(entriesOf(folder / "dotfiles"), 1);
}

TEST(WholeFile, NothingButAFileIsReplaced) {
    const TemporaryDirectory directory;
    const fs::path &folder = directory.path();
    fs::create_directory(folder / "directory");
    fs::create_symlink("nothing", folder / "dangling");
    fs::create_symlink("loop", folder / "loop");
    fs::create_symlink("/dev/full", folder / "device");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto entries = entriesOf(folder);
    for (const char *name :
         {"missing", "missing/file", "directory", "dangling", "loop", "device", "pipe", "."})
        EXPECT_TRUE(replaceWholeFile(folder / name, "new")) << name;
    EXPECT_EQ(entriesOf(folder), entries);
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
    EXPECT_TRUE(fs::is_directory(folder / "directory"));
}

TEST(WholeFile, AFolderThatMayNotBeWrittenKeepsItsFile) {
    const File file;
    {
        const WithoutPrivileges somebody(file);
        ASSERT_EQ(::chmod(file.folder().c_str(), 0500), 0);
        EXPECT_EQ(replaceWholeFile(file.path, "new"), std::errc::permission_denied);
        ASSERT_EQ(::chmod(file.folder().c_str(), 0700), 0);
        EXPECT_TRUE(isUntouched(file.path));
        EXPECT_EQ(replaceWholeFile(file.path, "new"), std::error_code());
    }
    EXPECT_EQ(bytesOf(file.path), "new");
}

/// The folder that the handler below looks into, and what it saw of the file beside the old one.
std::string watchedFolder;
std::atomic<mode_t> modeInTheMiddle = 0;
std::atomic<off_t> sizeInTheMiddle = 0;

TEST(WholeFile, AWriteThatFailsHalfwayLeavesTheOldFile) {
#ifdef __SANITIZE_THREAD__
    GTEST_SKIP() << "the thread sanitizer delays signals, and this one has to come within the write";
#endif
    const File file;
    ASSERT_EQ(::chmod(file.path.c_str(), 0644), 0);
    watchedFolder = file.folder();
    const mode_t before = ::umask(0);
    {
        const FileSizeLimit limit(5, [](int) {
            for (const auto &entry : fs::directory_iterator(watchedFolder)) {
                if (entry.path().filename() == "file")
                    continue;
                struct stat status {};
                ::lstat(entry.path().c_str(), &status);
                modeInTheMiddle = status.st_mode & 07777U;
                sizeInTheMiddle = status.st_size;
            }
        });
        EXPECT_EQ(replaceWholeFile(file.path, "0123456789"), std::errc::file_too_large);
    }
    ::umask(before);
    EXPECT_TRUE(isUntouched(file.path));
    EXPECT_EQ(sizeInTheMiddle, 5) << "nothing was beside the file while it was written";
    EXPECT_EQ(modeInTheMiddle, 0600U) << "not its owner's alone while it was written";
}

/// What a child process makes of the body among mounts of its own; absent where the system allows none.
std::optional<bool> amongPrivateMounts(const std::function<bool()> &body) {
    constexpr int notAllowed = 77;
    const auto ids = [](uid_t id) { return "0 " + std::to_string(id) + " 1"; };
    const std::string users = ids(::geteuid());
    const std::string groups = ids(::getegid());
    const pid_t child = ::fork();
    if (child == 0) {
        if (::unshare(CLONE_NEWUSER | CLONE_NEWNS) != 0)
            ::_exit(notAllowed);
        writeFile("/proc/self/setgroups", "deny");
        writeFile("/proc/self/uid_map", users);
        writeFile("/proc/self/gid_map", groups);
        if (::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0)
            ::_exit(notAllowed);
        ::_exit(body() ? 0 : 1);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    if (WIFEXITED(status) && WEXITSTATUS(status) == notAllowed)
        return std::nullopt;
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

TEST(WholeFile, AFullDiskKeepsTheOldFile) {
    const File file;
    const auto passed = amongPrivateMounts([&] {
        if (::mount("none", file.folder().c_str(), "tmpfs", 0, "size=64k") != 0)
            return false;
        writeFile(file.path, "old");
        const bool failed = replaceWholeFile(file.path, std::string(200'000, 'x')) ==
                            std::make_error_code(std::errc::no_space_on_device);
        return failed && isUntouched(file.path) && !replaceWholeFile(file.path, "new") &&
               bytesOf(file.path) == "new";
    });
    if (!passed)
        GTEST_SKIP() << "no mounts here";
    EXPECT_TRUE(*passed);
}

TEST(WholeFile, ARenamingThatFailsKeepsTheOldFile) {
    const File file;
    const auto passed = amongPrivateMounts([&] {
        // Nothing can be moved over a mount point.
        const char *path = file.path.c_str();
        return ::mount(path, path, nullptr, MS_BIND, nullptr) == 0 &&
               replaceWholeFile(file.path, "new") == std::errc::device_or_resource_busy &&
               isUntouched(file.path);
    });
    if (!passed)
        GTEST_SKIP() << "no mounts here";
    EXPECT_TRUE(*passed);
}

TEST(WholeFile, ReadersSeeTheOldContentsOrTheNew) {
    const File file;
    const std::array<std::string, 2> contents{std::string(300, 'a'), std::string(70'000, 'b')};
    ASSERT_FALSE(replaceWholeFile(file.path, contents[0]));
    std::atomic<bool> done = false;
    std::atomic<int> mixtures = 0;
    std::thread reader([&] {
        while (!done) {
            const auto bytes = readWholeFile(file.path, 100'000).value_or("");
            mixtures += std::ranges::count(contents, bytes) == 0;
        }
    });
    for (int i = 0; i < 50; ++i)
        EXPECT_FALSE(replaceWholeFile(file.path, contents[static_cast<std::size_t>(i % 2)]));
    done = true;
    reader.join();
    EXPECT_EQ(mixtures, 0);
}

} // namespace
} // namespace burnwick
