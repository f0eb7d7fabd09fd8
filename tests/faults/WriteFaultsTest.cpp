// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <set>
#include <sstream>
#include <vector>

#include <sys/stat.h>
#include <unistd.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::writeFile;

constexpr const char *oldSettings = R"({"refreshRate": 30, "future": [1, 2]})";
constexpr const char *oldLogin =
    R"({"mcpOAuth":{"n":1},"claudeAiOauth":{"accessToken":"a","refreshToken":"r","expiresAt":1}})";
constexpr const char *oldEntry = "[Desktop Entry]\nType=Application\nExec=elsewhere\nHidden=true\n";

/// One of the user's files before it is changed.
struct File {
    const char *name;
    const char *kind; ///< of write_once
    const char *file; ///< below the home
    const char *old;  ///< null for a new file
    bool linked;      ///< the name is a link to the file
};

std::ostream &operator<<(std::ostream &out, const File &file) {
    return out << file.name;
}

std::optional<std::string> bytesOf(const fs::path &file) {
    std::ifstream in(file, std::ios::binary);
    std::ostringstream bytes;
    bytes << in.rdbuf();
    return in.is_open() ? std::optional(bytes.str()) : std::nullopt;
}

/// A call of the kernel, with its ordinal among the program's calls of that name.
struct Call {
    std::string name;
    int number;
    std::string text;
};

/// Returns the calls between the program's two calls of getppid().
std::vector<Call> callsIn(const std::string &trace) {
    std::vector<Call> calls;
    std::map<std::string, int> counts;
    std::istringstream lines(trace);
    bool between = false;
    for (std::string line; std::getline(lines, line);) {
        const auto begin = line.find_first_not_of("0123456789 ");
        const auto end = line.find('(');
        if (begin == std::string::npos || end == std::string::npos || end < begin)
            continue;
        const std::string name = line.substr(begin, end - begin);
        const int number = ++counts[name];
        if (name == "getppid")
            between = !between;
        else if (between)
            calls.push_back({name, number, line});
    }
    return calls;
}

class WriteFaults : public testing::TestWithParam<File> {
protected:
    void SetUp() override {
        if (strace({QStringLiteral("true")}) != 0)
            GTEST_SKIP() << "strace is not here, or may not watch other programs";
        putOldFile();
        ASSERT_EQ(strace(command()), 0);
        m_calls = callsIn(bytesOf(m_trace).value_or(""));
        ASSERT_FALSE(m_calls.empty());
        m_new = bytesOf(m_file);
        ASSERT_TRUE(m_new);
        ASSERT_NE(m_new, m_old);
    }

    /// Restores the home to its state before the change.
    void putOldFile() {
        fs::remove_all(m_home);
        fs::create_directories(m_home);
        if (!m_old)
            return;
        writeFile(m_target, *m_old);
        fs::permissions(m_target, fs::perms::owner_read | fs::perms::owner_write);
        if (GetParam().linked) {
            fs::create_directories(m_file.parent_path());
            fs::create_symlink(m_target, m_file);
        }
    }

    [[nodiscard]] QStringList command() const {
        return {QStringLiteral(BURNWICK_WRITE_ONCE), QString::fromUtf8(GetParam().kind),
                QString::fromStdString(m_file)};
    }
    /// Runs the command under strace. Returns its exit code; negative when a signal ended it.
    int strace(const QStringList &command, const QStringList &options = {}) const {
        QStringList arguments{QStringLiteral("-f"), QStringLiteral("-o"), QString::fromStdString(m_trace)};
        return run(QStringLiteral("strace"), arguments + options + command);
    }
    static int run(const QString &program, const QStringList &arguments) {
        QProcess process;
        process.start(program, arguments);
        process.waitForFinished();
        return process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1;
    }
    int runWith(const Call &call, const std::string &fault) {
        putOldFile();
        const auto name = QString::fromStdString(call.name);
        const QStringList options{
            QStringLiteral("-e"), QStringLiteral("trace=") + name, QStringLiteral("-e"),
            QStringLiteral("inject=%1:%2:when=%3")
                .arg(name, QString::fromStdString(fault), QString::number(call.number))};
        return strace(command(), options);
    }

    /// Expects the old file or the new one, as private as before, and the link.
    void expectWhole() const {
        const auto now = bytesOf(m_file);
        EXPECT_TRUE(now == m_old || now == m_new) << now.value_or("nothing");
        if (now && m_old) {
            struct stat status {};
            EXPECT_EQ(::stat(m_file.c_str(), &status), 0);
            EXPECT_EQ(status.st_mode & 07777U, 0600U);
        }
        EXPECT_EQ(fs::is_symlink(m_file), m_old && GetParam().linked);
    }
    /// Returns the files beside it.
    [[nodiscard]] std::vector<fs::path> others() const {
        std::vector<fs::path> found;
        for (const auto &entry : fs::recursive_directory_iterator(m_home)) {
            if (!entry.is_directory() && entry.path() != m_file && entry.path() != m_target)
                found.push_back(entry.path());
        }
        return found;
    }

    const test::TemporaryDirectory m_directory;
    const fs::path m_trace = m_directory.path() / "trace";
    const fs::path m_home = m_directory.path() / "home";
    const fs::path m_file = m_home / GetParam().file;
    const fs::path m_target = GetParam().linked ? m_home / "dotfiles" / "file" : m_file;
    const std::optional<std::string> m_old = GetParam().old ? std::optional(GetParam().old) : std::nullopt;
    std::optional<std::string> m_new;
    std::vector<Call> m_calls;
};

TEST_P(WriteFaults, ACrashAtAnyCallLeavesTheOldFileOrTheNew) {
    std::set<bool> isNew;
    for (const Call &call : m_calls) {
        SCOPED_TRACE(call.text);
        EXPECT_LT(runWith(call, "signal=SIGKILL"), 0) << "it was not stopped";
        expectWhole();
        isNew.insert(bytesOf(m_file) == m_new);
        // A temporary file stays, which only its owner can read.
        const auto left = others();
        EXPECT_LE(left.size(), 1U);
        for (const fs::path &file : left) {
            struct stat status {};
            EXPECT_EQ(::stat(file.c_str(), &status), 0);
            EXPECT_TRUE(m_old == std::nullopt || (status.st_mode & 07777U) == 0600U) << file;
        }
    }
    EXPECT_TRUE(isNew.contains(false)) << "no crash came before the file was replaced";
}

TEST_P(WriteFaults, AnErrorOfAnyCallLeavesTheOldFileOrTheNewAndNothingElse) {
    // A program without memory ends.
    const std::set<std::string> spared{"mmap", "munmap", "mprotect", "brk", "futex"};
    for (const Call &call : m_calls) {
        if (spared.contains(call.name))
            continue;
        for (const char *error : {"ENOSPC", "EIO", "EINTR"}) {
            SCOPED_TRACE(error + (": " + call.text));
            const int outcome = runWith(call, std::string("error=") + error);
            EXPECT_NE(bytesOf(m_trace).value_or("").find("INJECTED"), std::string::npos) << "nothing failed";
            expectWhole();
            EXPECT_EQ(outcome, bytesOf(m_file) == m_new ? 0 : 3) << "another result than reported";
            EXPECT_EQ(others(), std::vector<fs::path>());
        }
    }
}

TEST_P(WriteFaults, ShortWritesAreContinued) {
    putOldFile();
    const QStringList arguments = command().mid(1) + QStringList{QStringLiteral("short")};
    ASSERT_EQ(run(command().first(), arguments), 0);
    EXPECT_EQ(bytesOf(m_file), m_new);
    putOldFile();
    ASSERT_EQ(strace(command() + QStringList{QStringLiteral("short")}), 0);
    const auto calls = callsIn(bytesOf(m_trace).value_or(""));
    EXPECT_GT(std::ranges::count(calls, "write", &Call::name), 2) << "nothing was cut short";
}

/// After a power failure a file may have its name and not its contents, which no crash of a program shows.
TEST_P(WriteFaults, TheContentsAreOnTheDiskBeforeTheyHaveTheName) {
    const auto last = [this](const std::set<std::string> &names) {
        const auto found = std::find_if(m_calls.rbegin(), m_calls.rend(),
                                        [&](const Call &call) { return names.contains(call.name); });
        return std::distance(found, m_calls.rend());
    };
    const auto renamed = last({"rename", "renameat", "renameat2", "linkat"});
    const auto written = last({"write"});
    const auto synced =
        std::find_if(m_calls.begin() + written, m_calls.end(),
                     [](const Call &call) { return call.name == "fsync" || call.name == "fdatasync"; }) -
        m_calls.begin();
    EXPECT_GT(written, 0);
    EXPECT_LT(written, synced + 1);
    EXPECT_LT(synced + 1, renamed);
}

INSTANTIATE_TEST_SUITE_P(
    Files, WriteFaults,
    testing::Values(File{"Settings", "settings", ".config/burnwick/burnwick.json", oldSettings, false},
                    File{"LinkedSettings", "settings", ".config/burnwick/burnwick.json", oldSettings, true},
                    File{"FirstSettings", "settings", ".config/burnwick/burnwick.json", nullptr, false},
                    File{"Credentials", "credentials", ".claude/.credentials.json", oldLogin, false},
                    File{"LinkedCredentials", "credentials", ".claude/.credentials.json", oldLogin, true},
                    File{"Autostart", "autostart", "autostart/burnwick.desktop", oldEntry, false},
                    File{"FirstAutostart", "autostart", "autostart/burnwick.desktop", nullptr, false}),
    [](const auto &file) { return std::string(file.param.name); });

} // namespace
} // namespace burnwick
