// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeSecretService.h"
#include "platform/linux/secrets/LinuxSecretStore.h"
#include "support/EnvironmentVariable.h"
#include "support/LogCapture.h"
#include "support/LogTreeFixture.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QTemporaryDir>
#include <QtNetwork/QLocalServer>

#include <sys/stat.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
namespace fs = std::filesystem;
using test::bytesOf;
using test::writeFile;

constexpr auto service = claudeCodeService;
constexpr std::size_t mebibyte = 1024UL * 1024;
/// Longer than any test waits: no answer is caused by it.
constexpr auto noLimit = 1h;
constexpr auto shortLimit = 50ms;

/// A store in a temporary home, and its latest answer.
struct Store {
    explicit Store(std::chrono::milliseconds limit = noLimit)
        : store(std::make_unique<LinuxSecretStore>([this] { return folders; }, limit)) {}

    test::TemporaryDirectory directory;
    std::vector<fs::path> folders{directory.path() / ".claude", directory.path() / "work"};
    fs::path file = folders[0] / ".credentials.json";
    std::unique_ptr<LinuxSecretStore> store;
    int answers = 0;
    std::optional<std::string> blob;
    std::string place = "/org/freedesktop/secrets/collection/login/0"; ///< of the last blob
    bool replaced = false;

    void startReading(const std::string &name = service) {
        store->read(name, [this](std::optional<StoredSecret> answer) {
            ++answers;
            blob = answer ? std::optional(answer->blob) : std::nullopt;
            place = answer ? answer->place : place;
        });
    }
    void startReplacing(const std::string &newBlob, const std::string &name = service) {
        store->replace(name, {newBlob, place}, [this](bool answer) {
            ++answers;
            replaced = answer;
        });
    }
    std::optional<std::string> read(const std::string &name = service) {
        startReading(name);
        EXPECT_TRUE(waitForAnswer());
        return blob;
    }
    bool replace(const std::string &newBlob, const std::string &name = service) {
        startReplacing(newBlob, name);
        EXPECT_TRUE(waitForAnswer());
        return replaced;
    }
    bool waitForAnswer() {
        const bool answered = waitFor([this] { return answers > 0; });
        EXPECT_LE(answers, 1);
        answers = 0;
        return answered;
    }
};

TEST(SecretStore, TheLoginIsThatOfTheFirstFolderThatHasOne) {
    Store store;
    const fs::path second = store.folders[1] / ".credentials.json";
    writeFile(second, "second");
    EXPECT_EQ(store.read(), "second");
    EXPECT_TRUE(store.replace("renewed"));
    EXPECT_EQ(bytesOf(second), "renewed");
    writeFile(store.file, "first");
    EXPECT_FALSE(store.replace("late")) << "of a login that read() does not return any more";
    EXPECT_EQ(bytesOf(second), "renewed");
    EXPECT_EQ(store.read(), "first");
}

TEST(SecretStore, ReadsTheKeyringOnlyWithoutAFile) {
    FakeSecretService keyring;
    keyring.items = {{"from the keyring"}};
    const std::string longest(mebibyte, 'x');
    const struct {
        const char *what;
        std::function<void(const fs::path &file)> make;
        std::optional<std::string> blob;
    } rows[] = {
        {"a file", [](auto &file) { writeFile(file, "blob"); }, "blob"},
        {"the longest file", [&](auto &file) { writeFile(file, longest); }, longest},
        {"a longer file", [&](auto &file) { writeFile(file, longest + 'x'); }, std::nullopt},
        {"a directory", [](auto &file) { fs::create_directories(file); }, std::nullopt},
        {"a pipe", [](auto &file) { ::mkfifo(file.c_str(), 0600); }, std::nullopt},
        {"a link to itself", [](auto &file) { fs::create_symlink(file.filename(), file); }, std::nullopt},
        // Regular, but its first byte cannot be read.
        {"memory", [](auto &file) { fs::create_symlink("/proc/self/mem", file); }, std::nullopt},
        {"a link to nothing", [](auto &file) { fs::create_symlink("nothing", file); }, "from the keyring"},
        {"no file", [](auto &) {}, "from the keyring"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        Store store;
        fs::create_directory(store.file.parent_path());
        row.make(store.file);
        EXPECT_EQ(store.read(), row.blob);
    }
}

TEST(SecretStore, ReplacesOnlyWhereTheBlobWasRead) {
    const QString json = QStringLiteral("application/json");
    FakeSecretService keyring;
    keyring.items = {{"in the keyring", 0, false, QString::fromLatin1(service), json},
                     {"other", 0, false, QStringLiteral("other service")}};
    Store store;
    EXPECT_EQ(store.read(), "in the keyring");
    EXPECT_TRUE(store.replace("1"));
    EXPECT_EQ(keyring.items[0].secret, "1");
    EXPECT_EQ(keyring.items[0].contentType, json);
    EXPECT_FALSE(fs::exists(store.file));
    // Claude Code moves to the file meanwhile.
    writeFile(store.file, "in the file");
    EXPECT_FALSE(store.replace("2"));
    EXPECT_EQ(bytesOf(store.file), "in the file");
    EXPECT_EQ(keyring.items[0].secret, "1");

    EXPECT_EQ(store.read(), "in the file");
    EXPECT_TRUE(store.replace("3"));
    EXPECT_FALSE(store.replace(std::string(mebibyte + 1, 'x')));
    EXPECT_EQ(bytesOf(store.file), "3");
    fs::rename(store.file, store.file.string() + ".away");
    EXPECT_FALSE(store.replace("4"));
    EXPECT_FALSE(fs::exists(store.file));
    EXPECT_EQ(keyring.items[0].secret, "1");
    fs::rename(store.file.string() + ".away", store.file);
    // Another service is never in the file.
    EXPECT_EQ(store.read("other service"), "other");
    EXPECT_TRUE(store.replace("5", "other service"));
    EXPECT_EQ(keyring.items[1].secret, "5");
    EXPECT_EQ(bytesOf(store.file), "3");
    EXPECT_TRUE(waitFor([&] { return keyring.openSessions == 0; }));
}

TEST(SecretStore, OfSeveralItemsTheNewestIsUsed) {
    using Item = FakeSecretService::Item;
    const struct {
        const char *what;
        std::vector<Item> items;
        std::optional<std::string> blob;
        std::size_t replaced;
    } rows[] = {
        {"of another service", {{"x", 1, false, QStringLiteral("other")}}, std::nullopt, 0},
        {"newest in the middle", {{"old", 5}, {"new", 1763300001}, {"old", 1763300000}}, "new", 1},
        {"newest locked", {{"old", 1}, {"locked", 9, true}, {"old", 2}}, std::nullopt, 0},
        {"oldest locked", {{"locked", 1, true}, {"old", 2}, {"new", 3}}, "new", 2},
        {"of unknown time", {{"first", 0}, {"second", 0}}, "first", 0},
        {"too long", {{QByteArray(mebibyte + 1, 'x'), 1}}, std::nullopt, 0},
        {"any bytes", {{QByteArray("\0\xff", 2), 1}}, std::string("\0\xff", 2), 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        FakeSecretService keyring;
        keyring.items = row.items;
        Store store;
        EXPECT_EQ(store.read(), row.blob);
        if (row.blob) {
            EXPECT_TRUE(store.replace("replaced"));
            for (std::size_t i = 0; i < row.items.size(); ++i)
                EXPECT_EQ(keyring.items[i].secret == "replaced", i == row.replaced) << i;
        }
        EXPECT_FALSE(keyring.calls.contains(QStringLiteral("Unlock")));
        EXPECT_FALSE(keyring.calls.contains(QStringLiteral("CreateItem")));
        EXPECT_TRUE(waitFor([&] { return keyring.openSessions == 0; }));
    }
}

TEST(SecretStore, AKeyringThatDoesNotReplyFailsAtTheLimit) {
    for (const char *method : {"SearchItems", "Get", "OpenSession", "GetSecret", "SetSecret"}) {
        SCOPED_TRACE(method);
        FakeSecretService keyring;
        // So many that one limit for each call would take longer than the test waits.
        keyring.items.assign(1000, {"secret-token", 1});
        keyring.held = QStringList{QLatin1String(method)};
        const test::LogCapture log;
        Store store(shortLimit);
        if (keyring.held.contains(QLatin1String("SetSecret")))
            store.startReplacing("new-token");
        else
            store.startReading();
        EXPECT_EQ(store.answers, 0) << "the call itself waited";
        EXPECT_TRUE(store.waitForAnswer()) << "the event loop was blocked, or the limit is ignored";
        EXPECT_EQ(store.blob, std::nullopt);
        EXPECT_FALSE(store.replaced);
        EXPECT_EQ(log.lines().filter(QStringLiteral("token")), QStringList());
    }
}

TEST(SecretStore, AKeyringThatIsReplacedIsUsedToTheEnd) {
    for (const bool ends : {false, true}) {
        FakeSecretService first(QStringLiteral("first-keyring"));
        first.items = {{"first"}};
        first.held = QStringList{QStringLiteral("SearchItems")};
        Store store;
        store.startReading();
        ASSERT_TRUE(waitFor([&] { return first.calls.contains(QStringLiteral("SearchItems")); }));
        FakeSecretService second(QStringLiteral("second-keyring"));
        second.items = {{"second"}};
        ends ? first.leave() : first.release();
        EXPECT_TRUE(store.waitForAnswer());
        EXPECT_EQ(store.blob, ends ? std::nullopt : std::optional<std::string>("first"));
        EXPECT_EQ(second.calls, QStringList()) << "called with the first one's paths";
        EXPECT_EQ(store.read(), "second");
    }
}

/// Replaces the session bus's address by a runtime directory, and closes the keyring's connection.
struct BusMoved {
    BusMoved() { QDBusConnection::disconnectFromBus(QStringLiteral("burnwick-keyring")); }

    const QTemporaryDir directory{QDir::tempPath() + QStringLiteral("/run~ %1,\u00fc")};
    const QString socket = directory.filePath(QStringLiteral("bus"));
    test::EnvironmentVariable address{"DBUS_SESSION_BUS_ADDRESS", {}};
    test::EnvironmentVariable runtimeDirectory{"XDG_RUNTIME_DIR", directory.path().toUtf8()};
};

TEST(SecretStore, NoBusIsStarted) {
    const BusMoved moved;
    Store store;
    store.startReading();
    EXPECT_EQ(store.answers, 1);
    EXPECT_EQ(store.blob, std::nullopt);
}

TEST(SecretStore, ASilentBusFailsAndTheNextCallTriesAgain) {
    FakeSecretService keyring;
    keyring.items = {{"in the keyring"}};
    const BusMoved moved;
    Store gone;
    Store store;
    {
        QLocalServer silent;
        ASSERT_TRUE(silent.listen(moved.socket));
        gone.startReading();
        gone.store.reset();
        store.startReading();
        EXPECT_EQ(store.answers, 0) << "the call itself waited";
        EXPECT_TRUE(store.waitForAnswer());
        EXPECT_EQ(store.blob, std::nullopt);
    }
    static const QRegularExpression path(QStringLiteral("unix:path=([^,]+)"));
    ASSERT_TRUE(QFile::link(path.match(sessionBusOfTests().address()).captured(1), moved.socket));
    EXPECT_EQ(store.read(), "in the keyring");
    EXPECT_EQ(gone.answers, 0);
}

} // namespace
} // namespace burnwick
