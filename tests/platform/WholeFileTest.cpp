// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/WholeFile.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;

// What is read is seen by SecretStoreTest, what is left when something fails in between by WriteFaultsTest.

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
            ::umask(before);
            EXPECT_EQ(modeOf(file), mode);
            EXPECT_EQ(test::bytesOf(file), "new");
            EXPECT_EQ(test::entriesOf(directory.path()), 1);
            fs::remove(file);
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
        {"nobody else can", somebody, other, somebody, false, 0644},
        // Nobody in the group that it gets instead may read it.
        {"nor give it to a group not theirs", somebody, somebody, other, true, 0600},
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

TEST(WholeFile, NothingButAFileIsReplaced) {
    const test::TemporaryDirectory directory;
    const fs::path &folder = directory.path();
    fs::create_directory(folder / "directory");
    fs::create_symlink("nothing", folder / "dangling");
    ASSERT_EQ(::mkfifo((folder / "pipe").c_str(), 0600), 0);
    const auto entries = test::entriesOf(folder);
    for (const char *name : {"missing", "directory", "dangling", "pipe"})
        EXPECT_TRUE(replaceWholeFile(folder / name, "new")) << name;
    EXPECT_EQ(test::entriesOf(folder), entries);
    EXPECT_TRUE(fs::is_fifo(folder / "pipe"));
}

} // namespace
} // namespace burnwick
