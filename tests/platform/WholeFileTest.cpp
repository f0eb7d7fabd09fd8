// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "files/WholeFile.h"
#include "platform/Platform.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <chrono>
#include <cstdint>
#include <cstring>
#include <functional>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;

// Reading is tested by SecretStoreTest, errors and crashes in between by WriteFaultsTest.

struct stat statusOf(const fs::path &file) {
    struct stat status {};
    EXPECT_EQ(::lstat(file.c_str(), &status), 0) << file;
    return status;
}

mode_t modeOf(const fs::path &file) {
    return statusOf(file).st_mode & 07777U;
}

TEST(WholeFile, TheNewFileHasTheModeOfTheOldOneWhateverTheMask) {
    const test::TemporaryDirectory directory;
    const fs::path file = directory.path() / "file";
    for (const mode_t mask : {0U, 0777U}) {
        for (const mode_t mode : {0600U, 0644U, 0400U, 0666U}) {
            test::writeFile(file, "old");
            ASSERT_EQ(::chmod(file.c_str(), mode), 0);
            const mode_t before = ::umask(mask);
            EXPECT_EQ(replaceWholeFile(file, "new"), std::error_code());
            EXPECT_EQ(modeOf(file), mode);
            EXPECT_EQ(test::bytesOf(file), "new");
            fs::remove(file);
            EXPECT_EQ(writeWholeFile(file, "created"), std::error_code());
            ::umask(before);
            EXPECT_EQ(modeOf(file), 0600U);
            EXPECT_EQ(test::bytesOf(file), "created");
            EXPECT_EQ(test::entriesOf(directory.path()), 1);
        }
    }
}

TEST(WholeFile, TheOwnerIsKeptOrTheOldFile) {
    if (::geteuid() != 0)
        GTEST_SKIP() << "only root gives files away";
    constexpr uid_t somebody = 65534;
    constexpr uid_t other = 1234;
    const struct {
        const char *what;
        uid_t writer, owner, group;
        bool replaced;
        mode_t mode;
    } rows[] = {
        {"root gives it back", 0, other, other, true, 0644},
        {"another user cannot", somebody, other, somebody, false, 0644},
        // Nobody in the group that it gets instead may read it.
        {"a user outside of the group cannot keep it", somebody, somebody, other, true, 0600},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const test::TemporaryDirectory directory;
        const fs::path file = directory.path() / "file";
        test::writeFile(file, "old");
        ASSERT_EQ(::chmod(directory.path().c_str(), 0777), 0);
        ASSERT_EQ(::chown(file.c_str(), row.owner, row.group), 0);
        ASSERT_EQ(::setegid(row.writer) | ::seteuid(row.writer), 0);
        const auto error = replaceWholeFile(file, "new");
        ASSERT_EQ(::seteuid(0) | ::setegid(0), 0);
        EXPECT_EQ(error, row.replaced ? std::error_code()
                                      : std::make_error_code(std::errc::operation_not_permitted));
        EXPECT_EQ(test::bytesOf(file), row.replaced ? "new" : "old");
        EXPECT_EQ(statusOf(file).st_uid, row.owner);
        EXPECT_EQ(statusOf(file).st_gid, row.mode == 0600U ? somebody : row.group);
        EXPECT_EQ(modeOf(file), row.mode);
        EXPECT_EQ(test::entriesOf(directory.path()), 1);
    }
}

/// With a list, the mode's bits for the group say what others than the group may do.
TEST(WholeFile, AnAccessListIsKeptAndNoneIsInherited) {
    struct Entry {
        std::uint16_t tag, permissions;
        std::uint32_t id;
    };
    const struct {
        std::uint32_t version;
        Entry owner, user, group, mask, others;
    } list{2, {1, 6, ~0U}, {2, 4, 1234}, {4, 0, ~0U}, {16, 4, ~0U}, {32, 0, ~0U}};
    const test::TemporaryDirectory directory;
    const fs::path listed = directory.path() / "listed";
    const fs::path plain = directory.path() / "plain";
    test::writeFile(listed, "old");
    test::writeFile(plain, "old");
    constexpr const char *access = "system.posix_acl_access";
    if (::setxattr(listed.c_str(), access, &list, sizeof list, 0) != 0)
        GTEST_SKIP() << "the file system has no access lists";
    EXPECT_EQ(replaceWholeFile(listed, "new"), std::error_code());
    ASSERT_EQ(::setxattr(directory.path().c_str(), "system.posix_acl_default", &list, sizeof list, 0), 0);
    EXPECT_EQ(replaceWholeFile(plain, "new"), std::error_code());
    auto kept = list;
    kept.version = 0;
    EXPECT_EQ(::getxattr(listed.c_str(), access, &kept, sizeof kept), ssize_t{sizeof list});
    EXPECT_EQ(std::memcmp(&kept, &list, sizeof list), 0);
    EXPECT_LT(::getxattr(plain.c_str(), access, nullptr, 0), 0);
}

TEST(WholeFile, TemporaryFilesOfACrashAreRemovedAndNothingElse) {
    const test::TemporaryDirectory home;
    const fs::path folder = home.path() / ".claude";
    const std::string temporary = "..credentials.json.0123456789abcdef";
    const auto old = fs::file_time_type::clock::now() - std::chrono::seconds(70);
    const fs::path target = home.path() / "kept";
    test::writeFile(target, "kept");
    fs::last_write_time(target, old);
    const struct {
        const char *what;
        std::string name;
        std::function<void(const fs::path &)> change;
        bool removed;
    } rows[] = {
        {"left", temporary, [](auto &) {}, true},
        {"under way", temporary,
         [](auto &file) { fs::last_write_time(file, fs::file_time_type::clock::now()); }, false},
        {"the file", ".credentials.json", [](auto &) {}, false},
        {"another file's", "..credentials.json2.0123456789abcdef", [](auto &) {}, false},
        {"another program's digits", "..credentials.json.0123456789ABCDEF", [](auto &) {}, false},
        {"another program's length", temporary + "0", [](auto &) {}, false},
        {"a directory", temporary,
         [&](auto &file) {
             fs::remove(file);
             fs::create_directory(file);
             fs::last_write_time(file, old);
         },
         false},
        {"a link", temporary,
         [&](auto &file) {
             fs::remove(file);
             fs::create_symlink(target, file);
             const timespec times[] = {{0, 0}, {0, 0}};
             EXPECT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, AT_SYMLINK_NOFOLLOW), 0);
         },
         false},
        {"another user's", temporary, [](auto &file) { EXPECT_EQ(::chown(file.c_str(), 1234, 1234), 0); },
         false},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        if (std::string_view(row.what) == "another user's" && ::geteuid() != 0)
            continue;
        fs::remove_all(folder);
        const fs::path file = folder / row.name;
        test::writeFile(file, "secret");
        fs::last_write_time(file, old);
        row.change(file);
        static_cast<void>(platform::makeSecretStore(home.path()));
        EXPECT_NE(fs::exists(fs::symlink_status(file)), row.removed);
        EXPECT_EQ(test::bytesOf(target), "kept");
    }
    // Beside the file, where its name is a link.
    test::writeFile(home.path() / "dotfiles" / "login", "x");
    const fs::path left = home.path() / "dotfiles" / ".login.0123456789abcdef";
    test::writeFile(left, "secret");
    fs::last_write_time(left, old);
    fs::remove_all(folder);
    fs::create_directory(folder);
    fs::create_symlink(home.path() / "dotfiles" / "login", folder / ".credentials.json");
    static_cast<void>(platform::makeSecretStore(home.path()));
    EXPECT_FALSE(fs::exists(left));
    EXPECT_EQ(test::bytesOf(home.path() / "dotfiles" / "login"), "x");
}

TEST(WholeFile, OnlyAFileIsReplaced) {
    const test::TemporaryDirectory directory;
    const fs::path &folder = directory.path();
    fs::create_directory(folder / "directory");
    fs::create_symlink("nothing", folder / "dangling");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto entries = test::entriesOf(folder);
    for (const char *name : {"missing", "directory", "dangling", "pipe"})
        EXPECT_TRUE(replaceWholeFile(folder / name, "new")) << name;
    for (const char *name : {"missing/file", "directory", "dangling", "pipe"})
        EXPECT_TRUE(writeWholeFile(folder / name, "new")) << name;
    EXPECT_EQ(test::entriesOf(folder), entries);
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
}

} // namespace
} // namespace burnwick
