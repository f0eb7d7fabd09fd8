// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/defaults/JsonUserDefaults.h"
#include "async/StoppableThread.h"

#include "prefs/SettingsFile.h"
#include "support/EnvironmentVariable.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <QFileInfo>
#include <QRegularExpression>

#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {
namespace {

// The corpus of the fuzzers covers the types of values, and the bytes of a damaged file. The tests of faults
// cover failing writes.

namespace fs = std::filesystem;

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");

/// Of a link itself, not of its target.
struct stat statusOf(const fs::path &path) {
    struct stat status {};
    EXPECT_EQ(lstat(path.c_str(), &status), 0);
    return status;
}

QJsonObject object(const char *json) {
    return QJsonDocument::fromJson(json).object();
}

TEST(JsonUserDefaults, AWriteChangesOnlyItsKeyAndKeepsEdits) {
    const test::SettingsFile file;
    file.write(R"({"a": "old", "b": "old", "future": {"list": [1, 2.5, null]}, "big": 9223372036854775807})");
    JsonUserDefaults defaults(file.path);
    file.write(R"({"a": "old", "c": "edit", "future": {"list": [3]}, "big": 9223372036854775807})");
    defaults.set(a, QStringLiteral("new"));
    EXPECT_EQ(file.values(),
              object(R"({"a": "new", "c": "edit", "future": {"list": [3]}, "big": 9223372036854775807})"));
    EXPECT_TRUE(file.bytes().contains("9223372036854775807"));
    EXPECT_EQ(defaults.get<QString>(b), std::nullopt);
    EXPECT_EQ(defaults.get<QString>(c), QStringLiteral("edit"));
    // An edit also wins over an earlier write.
    file.write(R"({"a": "edited", "future": 1})");
    defaults.set(b, true);
    EXPECT_EQ(file.values(), object(R"({"a": "edited", "b": true, "future": 1})"));
}

TEST(JsonUserDefaults, ConcurrentWritersKeepEachOthersValues) {
    constexpr int writers = 4;
    constexpr int keysOfEach = 10;
    // In memory where possible: on a slow disk one writer may hold the lock for longer than others wait.
    const bool hasMemory = QFileInfo(QStringLiteral("/dev/shm")).isWritable();
    const test::EnvironmentVariable place("TMPDIR", hasMemory ? "/dev/shm" : qgetenv("TMPDIR"));
    const test::SettingsFile file;
    {
        // Each has its own store, and so its own lock like another process.
        std::vector<StoppableThread> threads;
        for (int writer = 0; writer < writers; ++writer) {
            threads.emplace_back([&file, writer] {
                JsonUserDefaults defaults(file.path);
                for (int key = 0; key < keysOfEach; ++key)
                    defaults.set(QStringLiteral("%1-%2").arg(writer).arg(key), true);
            });
        }
    }
    EXPECT_EQ(file.values().size(), writers * keysOfEach);
    EXPECT_EQ(file.names(), QStringList(QStringLiteral("burnwick.json")));
}

TEST(JsonUserDefaults, WritesWithoutALockThatIsNeverReleased) {
    const test::SettingsFile file;
    file.write("{}");
    const int folder = open(file.folder.c_str(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(folder, LOCK_EX), 0);
    JsonUserDefaults(file.path).set(a, true);
    EXPECT_EQ(file.values(), object(R"({"a": true})"));
    close(folder);
}

TEST(JsonUserDefaults, ChangesReplaceTheFileByOneForTheOwnerAlone) {
    const test::SettingsFile file;
    const fs::path path = file.path.toStdString();
    const mode_t before = umask(0);
    JsonUserDefaults defaults(file.path);
    defaults.set(a, true);
    EXPECT_EQ(statusOf(file.folder).st_mode & 07777, 0700u);
    EXPECT_EQ(statusOf(path).st_mode & 07777, 0600u);
    EXPECT_EQ(chmod(path.c_str(), 0644), 0);
    const ino_t inode = statusOf(path).st_ino;
    defaults.set(a, true);
    EXPECT_EQ(statusOf(path).st_ino, inode) << "written without a change";
    defaults.set(a, false);
    EXPECT_NE(statusOf(path).st_ino, inode);
    EXPECT_EQ(statusOf(path).st_mode & 07777, 0600u);
    umask(before);
}

TEST(JsonUserDefaults, AFileDamagedMeanwhileIsSetAsideAndAllKnownValuesAreWritten) {
    const test::SettingsFile file;
    for (const char *damaged : {"{", "[1]", "oops"}) {
        file.write(R"({"a": 1, "future": [2]})");
        JsonUserDefaults defaults(file.path);
        file.write(damaged);
        const test::LogCapture log;
        defaults.set(b, qint64(3));
        EXPECT_EQ(file.values(), object(R"({"a": 1, "b": 3, "future": [2]})"));
        EXPECT_EQ(log.lines().size(), 1);
    }
    const QRegularExpression name(QStringLiteral(R"(^burnwick\.json\.corrupt-\d{8}T\d{6}Z(-\d+)?$)"));
    EXPECT_EQ(file.names().filter(name).size(), 3) << "one of the same second was replaced";
}

TEST(JsonUserDefaults, ReadOnlyAccessKeepsChangesInMemory) {
    const test::SettingsFile file;
    JsonUserDefaults(file.path, UserDefaults::Access::readOnly).set(a, true);
    EXPECT_FALSE(fs::exists(file.folder));
    file.write(R"({"b":1})");
    JsonUserDefaults defaults(file.path, UserDefaults::Access::readOnly);
    defaults.set(a, true);
    EXPECT_EQ(defaults.get<bool>(a), true);
    EXPECT_EQ(file.bytes(), R"({"b":1})");
}

TEST(JsonUserDefaults, AnUnreadableFileIsLeftAloneAndLoggedOnce) {
    const struct {
        const char *what;
        int (*make)(const char *path);
    } rows[] = {
        {"a directory", [](const char *path) { return mkdir(path, 0700); }},
        {"a pipe", [](const char *path) { return mkfifo(path, 0600); }},
        {"a read error", [](const char *path) { return symlink("/proc/self/mem", path); }},
        {"above the size limit",
         [](const char *path) {
             return close(open(path, O_CREAT | O_WRONLY, 0600)) | truncate(path, 1 << 21);
         }},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const test::SettingsFile file;
        fs::create_directories(file.folder);
        const std::string path = file.path.toStdString();
        ASSERT_EQ(row.make(path.c_str()), 0);
        const ino_t inode = statusOf(path).st_ino;
        const test::LogCapture log;
        JsonUserDefaults defaults(file.path);
        EXPECT_EQ(log.lines().size(), 1);
        defaults.set(a, true);
        defaults.set(b, qint64(2));
        EXPECT_EQ(defaults.get<bool>(a), true);
        EXPECT_EQ(file.names(), QStringList(QStringLiteral("burnwick.json")));
        EXPECT_EQ(statusOf(path).st_ino, inode);
        EXPECT_EQ(log.lines().size(), 1);
        // The first successful write stores all changes.
        fs::remove(path);
        file.write(R"({"a": false, "future": 1})");
        defaults.set(c, true);
        EXPECT_EQ(file.values(), object(R"({"a": true, "b": 2, "c": true, "future": 1})"));
    }
}

TEST(JsonUserDefaults, LinksStayAlsoToAMissingOrDamagedFile) {
    const test::SettingsFile file;
    const fs::path target = file.directory.path() / "dotfiles/burnwick.json";
    fs::create_directories(file.folder);
    fs::create_symlink("second", file.path.toStdString());
    fs::create_symlink("../dotfiles/burnwick.json", file.folder / "second");
    for (const bool isMissing : {true, false}) {
        if (!isMissing)
            test::writeFile(target, "damaged");
        JsonUserDefaults(file.path).set(a, isMissing);
        EXPECT_EQ(QJsonDocument::fromJson(QByteArray::fromStdString(test::bytesOf(target))).object(),
                  (QJsonObject{{a, isMissing}}));
        EXPECT_TRUE(QFileInfo(file.path).isSymLink());
        EXPECT_EQ(file.names(), QStringList({QStringLiteral("burnwick.json"), QStringLiteral("second")}));
    }
    EXPECT_EQ(test::entriesOf(target.parent_path()), 2) << "the target and the damaged file";
}

} // namespace
} // namespace burnwick
