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

using test::SettingsFile;

const QString a = QStringLiteral("a");
const QString b = QStringLiteral("b");
const QString c = QStringLiteral("c");

mode_t modeOf(const QString &path) {
    struct stat status {};
    EXPECT_EQ(stat(QFile::encodeName(path).constData(), &status), 0);
    return status.st_mode & 07777;
}

/// Of a link itself, not of what it leads to.
ino_t inodeOf(const QString &path) {
    struct stat status {};
    EXPECT_EQ(lstat(QFile::encodeName(path).constData(), &status), 0);
    return status.st_ino;
}

QJsonObject object(const char *json) {
    return QJsonDocument::fromJson(json).object();
}

template <StorableValue T>
void expectSurvives(const T &value) {
    const SettingsFile file;
    UserDefaults(file.path).set(a, value);
    const UserDefaults fresh(file.path);
    EXPECT_EQ(fresh.get<T>(a), value);
    EXPECT_EQ(fresh.get<bool>(a).has_value(), (std::same_as<T, bool>));
    EXPECT_EQ(fresh.get<QString>(a).has_value(), (std::same_as<T, QString>));
    EXPECT_EQ(fresh.get<double>(a).has_value(), (std::same_as<T, double> || std::same_as<T, qint64>));
}

TEST(UserDefaults, ValuesComeBackWithTheirTypes) {
    for (const bool value : {true, false})
        expectSurvives(value);
    for (const qint64 value :
         {qint64(0), qint64(1), qint64(9007199254740993), std::numeric_limits<qint64>::min()})
        expectSurvives(value);
    for (const double value : {3.0, 0.1, -1e300})
        expectSurvives(value);
    for (const auto &value : {QString(), QStringLiteral("true"), QStringLiteral("007"),
                              QStringLiteral(u"\"\\\n\u00fc\U0001F525")})
        expectSurvives(value);
}

TEST(UserDefaults, AWriteChangesOnlyItsKey) {
    const SettingsFile file;
    file.write(R"({"a": "old", "b": "old", "future": {"list": [1, 2.5, null]}, "big": 9223372036854775807})");
    UserDefaults defaults(file.path);
    // Somebody edits the file while the program runs.
    file.write(R"({"a": "old", "c": "outside", "future": {"list": [3]}, "big": 9223372036854775807})");
    defaults.set(a, QStringLiteral("new"));
    EXPECT_EQ(file.values(),
              object(R"({"a": "new", "c": "outside", "future": {"list": [3]}, "big": 9223372036854775807})"));
    EXPECT_TRUE(file.bytes().contains("9223372036854775807"));
    EXPECT_EQ(defaults.get<QString>(b), std::nullopt);
    EXPECT_EQ(defaults.get<QString>(c), QStringLiteral("outside"));
    // An edit also wins over what was written here earlier.
    file.write(R"({"a": "edited", "future": 1})");
    defaults.set(b, true);
    EXPECT_EQ(file.values(), object(R"({"a": "edited", "b": true, "future": 1})"));
    defaults.remove(a);
    EXPECT_EQ(file.values(), object(R"({"b": true, "future": 1})"));
    EXPECT_EQ(defaults.get<QString>(a), std::nullopt);
}

TEST(UserDefaults, WritersAtTheSameTimeLoseNothingOfEachOther) {
    constexpr int writers = 4;
    constexpr int keysOfEach = 10;
    // In memory, where that can be: a slow disk could hold up one writer for longer than others wait for it.
    const QString memory = QStringLiteral("/dev/shm");
    const QString place = QFileInfo(memory).isWritable() ? memory : QDir::tempPath();
    const SettingsFile file{QTemporaryDir(place + QStringLiteral("/burnwick-test-XXXXXX"))};
    {
        // Each with a store and so a lock of its own, as processes would have them.
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

TEST(UserDefaults, AWriterThatHoldsTheLockForEverIsNotWaitedForForEver) {
    const SettingsFile file;
    file.write("{}");
    const int folder = open(QFile::encodeName(file.folder()).constData(), O_RDONLY | O_DIRECTORY);
    ASSERT_EQ(flock(folder, LOCK_EX), 0);
    UserDefaults(file.path).set(a, true);
    EXPECT_EQ(file.values(), object(R"({"a": true})"));
    close(folder);
}

TEST(UserDefaults, AValueThatIsThereAlreadyIsNotWrittenAgain) {
    const SettingsFile file;
    UserDefaults defaults(file.path);
    defaults.remove(a);
    EXPECT_FALSE(QFileInfo::exists(file.path));
    defaults.set(a, true);
    const ino_t inode = inodeOf(file.path);
    defaults.set(a, true);
    EXPECT_EQ(inodeOf(file.path), inode);
    defaults.set(a, false);
    EXPECT_NE(inodeOf(file.path), inode);
}

TEST(UserDefaults, TheFileIsTheOwnersAlone) {
    const mode_t before = umask(0);
    const SettingsFile file;
    UserDefaults defaults(file.path);
    defaults.set(a, true);
    EXPECT_EQ(modeOf(file.folder()), 0700u);
    EXPECT_EQ(modeOf(file.path), 0600u);
    EXPECT_EQ(chmod(QFile::encodeName(file.path).constData(), 0644), 0);
    defaults.set(a, false);
    EXPECT_EQ(modeOf(file.path), 0600u);
    umask(before);
}

TEST(UserDefaults, ADamagedFileIsSetAside) {
    const SettingsFile file;
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
    // All of them are still there, although they came within a second or two.
    QByteArrayList kept;
    const QRegularExpression name(QStringLiteral(R"(^burnwick\.json\.corrupt-\d{8}T\d{6}Z(-\d+)?$)"));
    for (const auto &entry : file.names().filter(name))
        kept += test::bytesOf(file.folder() + u'/' + entry);
    std::ranges::sort(kept);
    std::ranges::sort(damaged);
    EXPECT_EQ(kept, damaged);
}

TEST(UserDefaults, WhoOnlyReadsChangesNothing) {
    for (const char *bytes : {"[1]", R"({"b": 1})"}) {
        const SettingsFile file;
        file.write(bytes);
        const ino_t inode = inodeOf(file.path);
        const test::LogCapture log;
        UserDefaults defaults(file.path, UserDefaults::Access::readOnly);
        defaults.set(a, true);
        EXPECT_EQ(defaults.get<bool>(a), true);
        EXPECT_EQ(file.bytes(), bytes);
        EXPECT_EQ(inodeOf(file.path), inode);
        EXPECT_EQ(file.names().size(), 1) << bytes;
        EXPECT_EQ(log.lines().size(), file.values().contains(b) ? 0 : 1) << bytes;
    }
    const SettingsFile missing;
    UserDefaults(missing.path, UserDefaults::Access::readOnly).set(a, true);
    EXPECT_FALSE(QFileInfo::exists(missing.folder()));
}

TEST(UserDefaults, AFileDamagedMeanwhileIsWrittenAnewFromMemory) {
    const SettingsFile file;
    file.write(R"({"a": 1, "future": [2]})");
    UserDefaults defaults(file.path);
    file.write("oops");
    const test::LogCapture log;
    defaults.set(b, qint64(3));
    EXPECT_EQ(file.values(), object(R"({"a": 1, "b": 3, "future": [2]})"));
    EXPECT_EQ(log.lines().size(), 1);
    ASSERT_EQ(file.names().size(), 2);
    EXPECT_EQ(test::bytesOf(file.folder() + u'/' + file.names()[1]), "oops");
}

TEST(UserDefaults, AnUnreadableFileIsLeftAlone) {
    const struct {
        const char *what;
        int (*make)(const char *path);
    } rows[] = {
        {"a directory", [](const char *path) { return mkdir(path, 0700); }},
        {"a pipe", [](const char *path) { return mkfifo(path, 0600); }},
        {"a regular file that fails to be read",
         [](const char *path) { return symlink("/proc/self/mem", path); }},
        {"one that is larger than all settings",
         [](const char *path) {
             return close(open(path, O_CREAT | O_WRONLY, 0600)) | truncate(path, 1 << 21);
         }},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const SettingsFile file;
        ASSERT_TRUE(QDir().mkpath(file.folder()));
        const QByteArray path = QFile::encodeName(file.path);
        ASSERT_EQ(row.make(path.constData()), 0);
        const ino_t inode = inodeOf(file.path);
        const test::LogCapture log;
        UserDefaults defaults(file.path);
        EXPECT_EQ(log.lines().size(), 1);
        defaults.set(a, true);
        defaults.set(b, qint64(2));
        EXPECT_EQ(defaults.get<bool>(a), true);
        EXPECT_EQ(defaults.get<qint64>(b), 2);
        EXPECT_EQ(file.names(), QStringList(QStringLiteral("burnwick.json")));
        EXPECT_EQ(inodeOf(file.path), inode);
        EXPECT_EQ(log.lines().size(), 1);
        // Once it can be read, nothing of what was changed meanwhile is lost.
        ASSERT_EQ(std::remove(path.constData()), 0);
        file.write(R"({"a": false, "future": 1})");
        defaults.set(c, true);
        EXPECT_EQ(file.values(), object(R"({"a": true, "b": 2, "c": true, "future": 1})"));
    }
}

TEST(UserDefaults, AFolderThatCannotBeMadeIsNoObstacle) {
    SettingsFile file;
    test::writeBytes(file.directory.filePath(QStringLiteral("plain")), "x");
    file.path = file.directory.filePath(QStringLiteral("plain/burnwick/burnwick.json"));
    const test::LogCapture log;
    UserDefaults defaults(file.path);
    defaults.set(a, true);
    defaults.set(b, true);
    EXPECT_EQ(defaults.get<bool>(a), true);
    EXPECT_EQ(log.lines().size(), 1);
    // Once it can be written, nothing of what was changed meanwhile is lost.
    ASSERT_TRUE(QFile::remove(file.directory.filePath(QStringLiteral("plain"))));
    defaults.set(c, true);
    EXPECT_EQ(file.values(), object(R"({"a": true, "b": true, "c": true})"));
}

TEST(UserDefaults, LinksStayAndTheirTargetIsReplaced) {
    const SettingsFile file;
    ASSERT_TRUE(QDir().mkpath(file.folder()));
    const QString target = file.directory.filePath(QStringLiteral("dotfiles/burnwick.json"));
    ASSERT_TRUE(QFile::link(QStringLiteral("second"), file.path));
    ASSERT_TRUE(
        QFile::link(QStringLiteral("../dotfiles/burnwick.json"), file.folder() + QStringLiteral("/second")));
    for (const char *before : {"", R"({"future": 1})", "damaged"}) {
        // At first there is no target.
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
        << "the target and what was damaged";
}

TEST(UserDefaults, TheFileLiesInTheFolderForConfiguration) {
    const test::EnvironmentVariable home("XDG_CONFIG_HOME", "/somewhere");
    EXPECT_EQ(UserDefaults::defaultPath(), QStringLiteral("/somewhere/burnwick/burnwick.json"));
    home.set({});
    EXPECT_EQ(UserDefaults::defaultPath(),
              QDir::homePath() + QStringLiteral("/.config/burnwick/burnwick.json"));
}

} // namespace
} // namespace burnwick
