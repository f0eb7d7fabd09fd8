// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "faults/Strace.h"
#include "support/SettledLogs.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <set>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::Call;
using test::usageLine;

/// The ledger before the report runs.
enum class Before { isMissing, isOld, keepsHistory, isInBackup };

/// The report of a few logs, with a ledger. Whatever fails, it prints the figures of a report without one, or
/// those with the lines that are kept.
class LedgerFaults : public testing::TestWithParam<Before> {
protected:
    void SetUp() override {
        if (!m_strace.isAvailable())
            GTEST_SKIP() << "strace is not installed, or is not permitted to trace";
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), QString::fromStdString(m_home.path()));
        environment.insert(QStringLiteral("XDG_DATA_HOME"), QString::fromStdString(m_data));
        m_strace.process().setProcessEnvironment(environment);
        for (int i = 0; i < 3; ++i)
            m_home.add(std::to_string(i) + ".jsonl", usageLine("2025-06-01T12:00:00Z", 10 + i, 1),
                       Instant(std::chrono::seconds(1'748'800'000 + i)));
        test::waitUntilSettled(m_home.projects());
        if (keeps())
            test::writeFile(m_home.path() / ".config" / "burnwick" / "burnwick.json",
                            R"({"keepHistory": true})");
        if (GetParam() != Before::isMissing) {
            ASSERT_EQ(m_strace.run(command()), 0);
            m_ledger = bytesOf(file());
            ASSERT_NE(m_ledger, "");
            // One file is appended to, one rewritten and one removed.
            std::ofstream(m_home.projects() / "0.jsonl", std::ios::app)
                << usageLine("2025-06-02T12:00:00Z", 5, 5);
            test::writeFile(m_home.projects() / "1.jsonl", usageLine("2025-06-01T12:00:00Z", 77, 1));
            fs::remove(m_home.projects() / "2.jsonl");
            test::waitUntilSettled(m_home.projects());
        }
        fs::remove_all(m_data);
        test::writeFile(m_data, "no folder");
        m_figuresOfLogs = figures();
        ASSERT_NE(m_figuresOfLogs.find("\"messageCount\": 3"), std::string::npos);
        putLedger();
        m_figures = keeps() ? figures() : m_figuresOfLogs;
        // The first line of one log and the only one of another are kept.
        ASSERT_EQ(m_figures.find("\"messageCount\": 5") != std::string::npos, keeps());
        putLedger();
        // With the paths of files.
        ASSERT_EQ(m_strace.run(command(), {QStringLiteral("-y")}), 0);
        for (const Call &call : m_strace.calls()) {
            if (call.text.find(m_data) != std::string::npos)
                m_calls.push_back(call);
        }
        ASSERT_EQ(figures(), m_figures);
    }

    /// Restores the ledger to its state before the logs changed.
    void putLedger() const {
        fs::remove_all(m_data);
        if (m_ledger.empty())
            return;
        const fs::path path =
            GetParam() == Before::isInBackup ? file().parent_path() / "ledger.backup.sqlite" : file();
        test::writeFile(path, m_ledger);
        fs::permissions(path, fs::perms(0600));
    }
    [[nodiscard]] static bool keeps() { return GetParam() >= Before::keepsHistory; }
    static QStringList command() {
        return {QStringLiteral(BURNWICK_REPORT_PROGRAM), QStringLiteral("--json")};
    }
    [[nodiscard]] fs::path file() const { return fs::path(m_data) / "burnwick" / "ledger.sqlite"; }
    /// Returns what the report prints without strace.
    std::string figures() {
        QProcess &process = m_strace.process();
        process.start(command().first(), command().mid(1));
        process.waitForFinished();
        return process.readAllStandardOutput().toStdString();
    }
    void expectOrder() {
        EXPECT_EQ(figures(), m_figures) << "after the fault";
        for (const auto &entry : fs::directory_iterator(file().parent_path()))
            EXPECT_EQ(entry.status().permissions(), fs::perms(0600)) << entry.path();
    }

    [[nodiscard]] bool isMovedAside() const { return fs::exists(file().string() + ".damaged"); }

    const test::LogHome m_home;
    const std::string m_data = m_home.path() / "data";
    std::string m_ledger;        ///< empty for a new one
    std::string m_figuresOfLogs; ///< without a ledger
    std::string m_figures;       ///< those with kept lines
    std::vector<Call> m_calls;
    test::Strace m_strace;
};

/// Whether the call is one of many similar ones, of which a part is enough.
bool isSpared(const Call &call, int rest) {
    return (call.name == "pwrite64" && call.number % 3 != rest) ||
           (call.name == "fcntl" && call.number % 8 != rest);
}

TEST_P(LedgerFaults, ACrashAtAnyWriteLeavesALedgerThatWorks) {
    const std::set<std::string> writing{"openat", "mkdir",  "pwrite64", "fdatasync", "ftruncate",
                                        "mmap",   "unlink", "rename",   "fsync",     "copy_file_range"};
    for (const Call &call : m_calls) {
        if (!writing.contains(call.name) || isSpared(call, 0))
            continue;
        SCOPED_TRACE(call.text);
        putLedger();
        EXPECT_LT(m_strace.runWithFault(command(), call, "signal=SIGKILL"), 0) << "it was not killed";
        expectOrder();
        EXPECT_FALSE(isMovedAside());
    }
}

TEST_P(LedgerFaults, AnErrorOfAnyCallChangesNoFigure) {
    const std::map<std::string, std::string> errors{
        {"openat", "EACCES"},         {"mkdir", "EROFS"},   {"pwrite64", "ENOSPC"}, {"pread64", "EIO"},
        {"fdatasync", "EIO"},         {"ftruncate", "EIO"}, {"mmap", "ENOMEM"},     {"fcntl", "ENOLCK"},
        {"unlink", "EACCES"},         {"flock", "ENOLCK"},  {"rename", "EACCES"},   {"fsync", "EIO"},
        {"copy_file_range", "ENOSPC"}};
    for (const Call &call : m_calls) {
        const auto error = errors.find(call.name);
        if (error == errors.end() || isSpared(call, 1))
            continue;
        // Some errors last. Those of the others would concern the logs, too.
        const bool lasts = call.name == "fcntl" || (call.name == "pwrite64" && call.number % 2 == 0);
        SCOPED_TRACE(call.text + (lasts ? " and later ones" : ""));
        putLedger();
        const auto begin = std::chrono::steady_clock::now();
        EXPECT_EQ(m_strace.runWithFault(command(), call, "error=" + error->second, lasts ? "+" : ""), 0);
        EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5))
            << "tried again too often";
        EXPECT_TRUE(m_strace.hasFailedACall());
        const std::string printed = m_strace.process().readAllStandardOutput().toStdString();
        EXPECT_TRUE(printed == m_figures || printed == m_figuresOfLogs) << printed;
        expectOrder();
        EXPECT_FALSE(isMovedAside());
    }
}

std::string nameOf(const testing::TestParamInfo<Before> &before) {
    constexpr std::array names{"Missing", "Old", "KeepingHistory", "InBackup"};
    return names.at(static_cast<std::size_t>(before.param));
}

INSTANTIATE_TEST_SUITE_P(Ledger, LedgerFaults,
                         testing::Values(Before::isMissing, Before::isOld, Before::keepsHistory,
                                         Before::isInBackup),
                         nameOf);

} // namespace
} // namespace burnwick
