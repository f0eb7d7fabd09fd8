// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "prefs/UserDefaults.h"
#include "prefs/SettingsFile.h"
#include "support/EnvironmentVariable.h"
#include "support/LogCapture.h"

#include <gtest/gtest.h>

#include <QRegularExpression>

#include <algorithm>
#include <limits>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {
namespace {

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");

/// Of a link itself, not of its target.
struct stat statusOf(const QString &path) {
    struct stat status {};
    EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0);
    return status;
}

QJsonObject object(const char *json) {
    return QJsonDocument::fromJson(json).object();
}

template <StorableValue T>
void expectReadBack(const T &value) {
    const test::SettingsFile file;
    UserDefaults(file.path).set(a, value);
    const UserDefaults fresh(file.path);
    EXPECT_EQ(fresh.get<T>(a), value);
    EXPECT_EQ(fresh.get<bool>(a).has_value(), (std::same_as<T, bool>));
    EXPECT_EQ(fresh.get<QString>(a).has_value(), (std::same_as<T, QString>));
    EXPECT_EQ(fresh.get<double>(a).has_value(), (std::same_as<T, double> || std::same_as<T, qint64>));
}

TEST(UserDefaults, ValuesAreReadBackWithTheirTypes) {
    expectReadBack(true);
    expectReadBack(false);
    for (const qint64 value : {qint64(0), qint64(9007199254740993), std::numeric_limits<qint64>::min()})
        expectReadBack(value);
    for (const double value : {3.0, 0.1, -1e300})
        expectReadBack(value);
    for (const auto &value : {QString(), QStringLiteral("007"), QStringLiteral(u"\"\\\n\u00fc\U0001F525")})
        expectReadBack(value);
}

TEST(UserDefaults, AWriteChangesOnlyItsKeyAndKeepsEdits) {
    const test::SettingsFile file;
    file.write(R"({"a": "old", "b": "old", "future": {"list": [1, 2.5, null]}, "big": 9223372036854775807})");
    UserDefaults defaults(file.path);
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

TEST(UserDefaults, ConcurrentWritersKeepEachOthersValues) {
    constexpr int writers = 4;
    constexpr int keysOfEach = 10;
    // In memory where possible: on a slow disk one writer may hold the lock for longer than others wait.
    const QString memory = QStringLiteral("/dev/shm");
    const QString place = QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    const test::SettingsFile file{QTemporaryDir(place + QStringLiteral("/burnwick-test-XXXXXX"))};
    {
        // Each has its own store and so its own lock, as processes would.
        std::vector<std::jthread> threads;
        for (int writer = 0; writer < writers; ++writer) {
            threads.emplace_back([&file, writer] {
                UserDefaults defaults(file.path);
                for (int key = 0; key < keysOfEach; ++key)
                    defaults.set(QStringLiteral("%1-%2").arg(writer).arg(key), true);
            });
        }
    }
    EXPECT_EQ(file.values().size(), writers * keysOfEach);
    EXPECT_EQ(file.names(), QStringList(QStringLiteral("burnwick.json")));
}

TEST(UserDefaults, WritesWithoutALockThatIsNeverReleased) {
    const test::SettingsFile file;
    file.write("{}");
    const int folder = open(QFile::encodeName(file.folder()).constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(folder, LOCK_EX), 0);
    UserDefaults(file.path).set(a, true);
    EXPECT_EQ(file.values(), object(R"({"a": true})"));
    close(folder);
}

TEST(UserDefaults, ChangesReplaceTheFileByOneForTheOwnerAlone) {
    const test::SettingsFile file;
    const mode_t before = umask(0);
    UserDefaults defaults(file.path);
    defaults.set(a, true);
    EXPECT_EQ(statusOf(file.folder()).st_mode & 07777, 0700u);
    EXPECT_EQ(statusOf(file.path).st_mode & 07777, 0600u);
    EXPECT_EQ(chmod(QFile::encodeName(file.path).constData(), 0644), 0);
    const ino_t inode = statusOf(file.path).st_ino;
    defaults.set(a, true);
    EXPECT_EQ(statusOf(file.path).st_ino, inode);
    defaults.set(a, false);
    EXPECT_NE(statusOf(file.path).st_ino, inode);
    EXPECT_EQ(statusOf(file.path).st_mode & 07777, 0600u);
    umask(before);
}

TEST(UserDefaults, ADamagedFileIsSetAside) {
    const test::SettingsFile file;
    QByteArrayList damaged{"{", "[1]", QByteArray(3, '\0')};
    for (const auto &bytes : damaged) {
        file.write(bytes);
        const test::LogCapture log;
        UserDefaults defaults(file.path);
        EXPECT_EQ(defaults.get<bool>(a), std::nullopt);
        EXPECT_FALSE(QFileInfo::exists(file.path));
        defaults.set(a, true);
        EXPECT_EQ(file.values(), object(R"({"a": true})")) << bytes.constData();
        EXPECT_EQ(log.lines().size(), 1);
    }
    // Damaged while the program runs: the known values are written again.
    damaged.append("oops");
    file.write(R"({"a": 1, "future": [2]})");
    UserDefaults defaults(file.path);
    file.write("oops");
    defaults.set(b, qint64(3));
    EXPECT_EQ(file.values(), object(R"({"a": 1, "b": 3, "future": [2]})"));
    // None replaces another, although they were set aside within a second or two.
    QByteArrayList kept;
    const QRegularExpression name(QStringLiteral(R"(^burnwick\.json\.corrupt-\d{8}T\d{6}Z(-\d+)?$)"));
    for (const auto &entry : file.names().filter(name))
        kept += test::bytesOf(file.folder() + u'/' + entry);
    std::ranges::sort(kept);
    std::ranges::sort(damaged);
    EXPECT_EQ(kept, damaged);
}

TEST(UserDefaults, ReadOnlyAccessChangesNothing) {
    for (const char *bytes : {"[1]", R"({"b": 1})"}) {
        const test::SettingsFile file;
        file.write(bytes);
        const ino_t inode = statusOf(file.path).st_ino;
        const test::LogCapture log;
        UserDefaults defaults(file.path, UserDefaults::Access::readOnly);
        defaults.set(a, true);
        EXPECT_EQ(defaults.get<bool>(a), true);
        EXPECT_EQ(file.bytes(), bytes);
        EXPECT_EQ(statusOf(file.path).st_ino, inode);
        EXPECT_EQ(file.names().size(), 1) << bytes;
        EXPECT_EQ(log.lines().size(), file.values().contains(b) ? 0 : 1) << bytes;
    }
    const test::SettingsFile missing;
    UserDefaults(missing.path, UserDefaults::Access::readOnly).set(a, true);
    EXPECT_FALSE(QFileInfo::exists(missing.folder()));
}

TEST(UserDefaults, AnUnreadableFileIsLeftAlone) {
    const struct {
        const char *what;
        int (*make)(const char *path);
    } rows[] = {
        {"a directory", [](const char *path) { return mkdir(path, 0700); }},
        {"a pipe", [](const char *path) { return mkfifo(path, 0600); }},
        {"a regular file with a read error",
         [](const char *path) { return symlink("/proc/self/mem", path); }},
        {"a file above the size limit",
         [](const char *path) {
             return close(open(path, O_CREAT | O_WRONLY, 0600)) | truncate(path, 1 << 21);
         }},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const test::SettingsFile file;
        ASSERT_TRUE(QDir().mkpath(file.folder()));
        const QByteArray path = QFile::encodeName(file.path);
        ASSERT_EQ(row.make(path.constData()), 0);
        const ino_t inode = statusOf(file.path).st_ino;
        const test::LogCapture log;
        UserDefaults defaults(file.path);
        EXPECT_EQ(log.lines().size(), 1);
        defaults.set(a, true);
        defaults.set(b, qint64(2));
        EXPECT_EQ(defaults.get<bool>(a), true);
        EXPECT_EQ(file.names(), QStringList(QStringLiteral("burnwick.json")));
        EXPECT_EQ(statusOf(file.path).st_ino, inode);
        EXPECT_EQ(log.lines().size(), 1);
        // The first successful write stores all changes.
        ASSERT_EQ(std::remove(path.constData()), 0);
        file.write(R"({"a": false, "future": 1})");
        defaults.set(c, true);
        EXPECT_EQ(file.values(), object(R"({"a": true, "b": 2, "c": true, "future": 1})"));
    }
}

TEST(UserDefaults, WithoutAFolderChangesStayInMemory) {
    test::SettingsFile file;
    const QString plain = file.directory.filePath(QStringLiteral("plain"));
    test::writeBytes(plain, "x");
    file.path = plain + QStringLiteral("/burnwick/burnwick.json");
    const test::LogCapture log;
    UserDefaults defaults(file.path);
    defaults.set(a, true);
    defaults.set(b, true);
    EXPECT_EQ(log.lines().size(), 1);
    ASSERT_TRUE(QFile::remove(plain));
    defaults.set(c, true);
    EXPECT_EQ(file.values(), object(R"({"a": true, "b": true, "c": true})"));
}

TEST(UserDefaults, LinksStayAndTheirTargetIsReplaced) {
    const test::SettingsFile file;
    ASSERT_TRUE(QDir().mkpath(file.folder()));
    const QString target = file.directory.filePath(QStringLiteral("dotfiles/burnwick.json"));
    ASSERT_TRUE(QFile::link(QStringLiteral("second"), file.path));
    ASSERT_TRUE(
        QFile::link(QStringLiteral("../dotfiles/burnwick.json"), file.folder() + QStringLiteral("/second")));
    for (const char *before : {"", R"({"future": 1})", "damaged"}) {
        // The target is missing at first.
        if (*before != '\0')
            test::writeBytes(target, before);
        UserDefaults defaults(file.path);
        defaults.set(a, QString::fromLatin1(before));
        EXPECT_EQ(QJsonDocument::fromJson(test::bytesOf(target)).object().value(a).toString().toStdString(),
                  before);
        EXPECT_TRUE(QFileInfo(file.path).isSymLink());
        EXPECT_EQ(file.names(), QStringList({QStringLiteral("burnwick.json"), QStringLiteral("second")}));
    }
    EXPECT_EQ(QDir(QFileInfo(target).path()).entryList(QDir::Files).size(), 2)
        << "the target and the damaged file";
}

TEST(UserDefaults, TheFileIsInTheConfigurationFolder) {
    const test::EnvironmentVariable home("XDG_CONFIG_HOME", "/somewhere");
    EXPECT_EQ(UserDefaults::defaultPath(), QStringLiteral("/somewhere/burnwick/burnwick.json"));
    home.set({});
    EXPECT_EQ(UserDefaults::defaultPath(),
              QDir::homePath() + QStringLiteral("/.config/burnwick/burnwick.json"));
}

} // namespace
} // namespace burnwick
