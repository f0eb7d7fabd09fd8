// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "faults/Strace.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <regex>
#include <set>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::Call;
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
    const char *old;  ///< empty for a new file
    bool linked;      ///< the name is a link to the file
};

std::ostream &operator<<(std::ostream &out, const File &file) {
    return out << file.name;
}

/// Returns those between the program's two calls of getppid().
std::vector<Call> callsBetweenMarks(const std::vector<Call> &calls) {
    const auto isMark = [](const Call &call) { return call.name == "getppid"; };
    const auto first = std::ranges::find_if(calls, isMark);
    return first == calls.end() ? std::vector<Call>()
                                : std::vector(first + 1, std::find_if(first + 1, calls.end(), isMark));
}

class WriteFaults : public testing::TestWithParam<File> {
protected:
    void SetUp() override {
        if (!m_strace.isAvailable())
            GTEST_SKIP() << "strace is not installed, or is not permitted to trace";
        putOldFile();
        ASSERT_EQ(m_strace.run(command()), 0);
        m_calls = callsBetweenMarks(m_strace.calls());
        ASSERT_FALSE(m_calls.empty());
        m_new = bytesOf(m_file);
        ASSERT_NE(m_new, "");
        ASSERT_NE(m_new, m_old);
    }

    /// Restores the home to its state before the change.
    void putOldFile() {
        fs::remove_all(m_home);
        fs::create_directories(m_home);
        if (m_old.empty())
            return;
        writeFile(m_target, m_old);
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
    int runWith(const Call &call, const std::string &fault) {
        putOldFile();
        return m_strace.runWithFault(command(), call, fault);
    }

    /// Expects the old file or the new one, with the same mode, and the same link.
    void expectWhole() const {
        const std::string now = bytesOf(m_file);
        EXPECT_TRUE(now == m_old || now == m_new) << now;
        EXPECT_TRUE(!now.empty() || !fs::exists(m_file)) << "an empty file";
        if (!m_old.empty()) {
            EXPECT_EQ(fs::status(m_file).permissions(), fs::perms(0600));
        }
        EXPECT_EQ(fs::is_symlink(m_file), GetParam().linked);
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
    const fs::path m_home = m_directory.path() / "home";
    const fs::path m_file = m_home / GetParam().file;
    const fs::path m_target = GetParam().linked ? m_home / "dotfiles" / "file" : m_file;
    const std::string m_old = GetParam().old;
    std::string m_new;
    test::Strace m_strace;
    std::vector<Call> m_calls;
};

TEST_P(WriteFaults, ACrashAtAnyCallLeavesTheOldFileOrTheNew) {
    std::set<bool> isNew;
    for (const Call &call : m_calls) {
        SCOPED_TRACE(call.text);
        EXPECT_LT(runWith(call, "signal=SIGKILL"), 0) << "it was not killed";
        expectWhole();
        isNew.insert(bytesOf(m_file) == m_new);
        // Only the owner can read a temporary file that remains.
        const auto left = others();
        EXPECT_LE(left.size(), 1U);
        for (const fs::path &file : left)
            EXPECT_TRUE(m_old.empty() || fs::status(file).permissions() == fs::perms(0600)) << file;
    }
    EXPECT_TRUE(isNew.contains(false)) << "no crash came before the file was replaced";
}

TEST_P(WriteFaults, AnErrorOfAnyCallLeavesTheOldFileOrTheNewAndNothingElse) {
    // Without memory the program ends.
    const std::set<std::string> spared{"mmap", "munmap", "mprotect", "brk", "futex"};
    for (const Call &call : m_calls) {
        if (spared.contains(call.name))
            continue;
        for (const char *error : {"ENOSPC", "EIO", "EINTR"}) {
            SCOPED_TRACE(error + (": " + call.text));
            const int outcome = runWith(call, std::string("error=") + error);
            EXPECT_TRUE(m_strace.hasFailedACall()) << "nothing failed";
            expectWhole();
            EXPECT_EQ(outcome, bytesOf(m_file) == m_new ? 0 : 3) << "another result than reported";
            EXPECT_EQ(others(), std::vector<fs::path>());
        }
    }
}

TEST_P(WriteFaults, ShortWritesAreContinued) {
    putOldFile();
    ASSERT_EQ(m_strace.run(command() + QStringList{QStringLiteral("short")}), 0);
    EXPECT_EQ(bytesOf(m_file), m_new);
    EXPECT_GT(std::ranges::count(callsBetweenMarks(m_strace.calls()), "write", &Call::name), 2)
        << "no short write";
}

/// After a power failure a file may have its name without its contents; a crash cannot show that.
TEST_P(WriteFaults, TheContentsAreSyncedBeforeTheRename) {
    static const std::regex order(R"(\bwrite (?!.*\bwrite ).*\bf(data)?sync .*\b(rename|linkat))");
    std::string names;
    for (const Call &call : m_calls)
        names += call.name + ' ';
    EXPECT_TRUE(std::regex_search(names, order)) << names;
}

INSTANTIATE_TEST_SUITE_P(
    Files, WriteFaults,
    testing::Values(File{"Settings", "settings", ".config/burnwick/burnwick.json", oldSettings, false},
                    File{"LinkedSettings", "settings", ".config/burnwick/burnwick.json", oldSettings, true},
                    File{"FirstSettings", "settings", ".config/burnwick/burnwick.json", "", false},
                    File{"Credentials", "credentials", ".claude/.credentials.json", oldLogin, false},
                    File{"LinkedCredentials", "credentials", ".claude/.credentials.json", oldLogin, true},
                    File{"Autostart", "autostart", "autostart/burnwick.desktop", oldEntry, false},
                    File{"FirstAutostart", "autostart", "autostart/burnwick.desktop", "", false}),
    [](const auto &file) { return std::string(file.param.name); });

} // namespace
} // namespace burnwick
