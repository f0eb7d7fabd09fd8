// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/files/WholeFile.h"
#include "platform/Platform.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <ctime>
#include <set>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;

// SecretStoreTest tests reading; WriteFaultsTest tests errors and crashes of a replacement.

struct stat statusOf(const fs::path &file) {
    struct stat status {};
    EXPECT_EQ(::lstat(file.c_str(), &status), 0) << file;
    return status;
}

TEST(WholeFile, AReplacedFileKeepsItsModeAndOnlyANewOneIsMasked) {
    const test::TemporaryDirectory directory;
    const fs::path file = directory.path() / "file";
    for (const mode_t mask : {0U, 0077U}) {
        const mode_t before = ::umask(mask);
        EXPECT_EQ(writeWholeFile(file, "created"), std::error_code());
        EXPECT_EQ(fs::status(file).permissions(), fs::perms(0644U & ~mask));
        EXPECT_EQ(test::bytesOf(file), "created");
        for (const mode_t mode : {0600U, 0644U, 0400U, 0666U}) {
            ASSERT_EQ(::chmod(file.c_str(), mode), 0);
            EXPECT_EQ((mode == 0644U ? writeWholeFile : replaceWholeFile)(file, std::to_string(mode)),
                      std::error_code());
            EXPECT_EQ(fs::status(file).permissions(), fs::perms(mode));
            EXPECT_EQ(test::bytesOf(file), std::to_string(mode));
            EXPECT_EQ(test::entriesOf(directory.path()), 1);
        }
        ::umask(before);
        fs::remove(file);
    }
}

TEST(WholeFile, KeepsTheOwnerOrFails) {
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
        EXPECT_EQ(fs::status(file).permissions(), fs::perms(row.mode));
        EXPECT_EQ(test::entriesOf(directory.path()), 1);
    }
}

/// With a list, the mode's bits for the group are the list's mask.
TEST(WholeFile, KeepsAnAccessListAndInheritsNone) {
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

TEST(WholeFile, OnlyTemporaryFilesOfACrashAreRemoved) {
    const test::TemporaryDirectory home;
    const fs::path folder = home.path() / "dotfiles";
    fs::create_directory(folder);
    fs::create_directory(home.path() / ".claude");
    fs::create_symlink(folder / "login", home.path() / ".claude" / ".credentials.json");
    const auto age = [](const fs::path &file, time_t seconds) {
        const timespec time{std::time(nullptr) - seconds, 0};
        const timespec times[] = {time, time};
        EXPECT_EQ(::utimensat(AT_FDCWD, file.c_str(), times, AT_SYMLINK_NOFOLLOW), 0) << file;
    };
    std::set<std::string> kept{
        "login",                    // the file
        ".login.0000000000000001",  // recent
        ".login2.0000000000000002", // another file's
        ".login.000000000000000A",  // another program's digits
        ".login.00000000000000003", // another program's length
        ".login.0000000000000004",  // a directory
        ".login.0000000000000005",  // a link
    };
    for (const std::string &name : kept) {
        if (name.ends_with('4'))
            fs::create_directory(folder / name);
        else if (name.ends_with('5'))
            fs::create_symlink("login", folder / name);
        else
            test::writeFile(folder / name, "kept");
        age(folder / name, name.ends_with('1') ? 10 : 70);
    }
    for (const char *name : {".login.0123456789abcdef", ".login.0000000000000006"}) {
        test::writeFile(folder / name, "secret");
        age(folder / name, 70);
    }
    if (::geteuid() == 0) { // another user's
        ASSERT_EQ(::chown((folder / ".login.0000000000000006").c_str(), 1234, 1234), 0);
        kept.insert(".login.0000000000000006");
    }
    static_cast<void>(platform::makeSecretStore([&home] { return std::vector{home.path() / ".claude"}; }));
    std::set<std::string> left;
    for (const auto &entry : fs::directory_iterator(folder))
        left.insert(entry.path().filename());
    EXPECT_EQ(left, kept);
}

} // namespace
} // namespace burnwick
