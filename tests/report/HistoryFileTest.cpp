// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/HistoryFile.h"

#include "ledger/HistoryCsv.h"
#include "ledger/Ledger.h"
#include "logs/JSONLParser.h"
#include "report/ReportChild.h"
#include "support/JsonMembers.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <csignal>
#include <filesystem>

#include <sys/resource.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::bytesOf;
using test::LogHome;
using test::Outcome;
using test::Program;
using test::usageLine;
using test::writeFile;

const Instant longAgo(std::chrono::seconds(1'748'800'000));

/// A home with three messages of two sessions, and another without logs where the history is kept.
struct HistoryFile : testing::Test {
    HistoryFile() {
        m_first.add("p/one.jsonl",
                    usageLine("2025-06-01T12:00:00.000Z", 1, 2) + usageLine("2025-06-01T12:00:00.000Z", 1, 2),
                    longAgo);
        m_first.add("q/two.jsonl", usageLine("2025-06-02T12:00:00.000Z", 30, 40, 5, 6, "claude-opus-4-5"),
                    longAgo);
        writeFile(m_second.path() / ".config" / "burnwick" / "burnwick.json", R"({"keepHistory": true})");
    }

    static Outcome run(const LogHome &home, const std::string &option, const std::string &file) {
        return Program(home.path()).run({QString::fromStdString("--" + option + "-history=" + file)});
    }
    static std::string output(const LogHome &home, const std::string &option, const std::string &file) {
        const Outcome outcome = run(home, option, file);
        EXPECT_EQ(outcome.exitCode, 0);
        EXPECT_EQ(outcome.errors, "");
        return outcome.output;
    }
    static std::string history(const LogHome &home) {
        const Outcome outcome = Program(home.path()).run({QStringLiteral("--json")});
        EXPECT_EQ(outcome.errors, "");
        return QJsonDocument(test::jsonObject(outcome.output)[QStringLiteral("history")].toObject())
            .toJson()
            .toStdString();
    }

    const LogHome m_first;
    const LogHome m_second;
    const fs::path m_file = m_first.path() / "history.csv";
};

TEST_F(HistoryFile, ImportedOnAnotherMachineGivesTheSameHistoryOnce) {
    writeFile(m_file, "an older file");
    EXPECT_EQ(output(m_first, "export", m_file),
              "Exported 3 messages of 2 sessions to " + m_file.string() + ".\n");
    EXPECT_EQ(fs::status(m_file).permissions(), fs::perms::owner_read | fs::perms::owner_write);
    const Outcome streamed = run(m_first, "export", "-");
    EXPECT_EQ(streamed.output, bytesOf(m_file));
    EXPECT_EQ(streamed.errors, "Exported 3 messages of 2 sessions to -.\n");

    const std::string expected = history(m_first);
    EXPECT_NE(expected.find("\"messageCount\": 3"), std::string::npos) << expected;
    EXPECT_NE(history(m_second), expected);
    EXPECT_EQ(output(m_second, "import", m_file), "Imported 3 messages.\n");
    EXPECT_EQ(history(m_second), expected);
    EXPECT_EQ(output(m_second, "import", m_file), "Imported 0 messages; 3 messages were known already.\n");
    EXPECT_EQ(history(m_second), expected);

    // The second machine gets one of the sessions as a log.
    m_second.add("q/two.jsonl", bytesOf(m_first.projects() / "q" / "two.jsonl"), longAgo);
    EXPECT_EQ(history(m_second), expected);
    m_second.add("q/three.jsonl", usageLine("2025-06-03T12:00:00.000Z", 7, 8), longAgo);
    EXPECT_EQ(output(m_second, "export", m_file),
              "Exported 4 messages of 3 sessions to " + m_file.string() + ".\n");
    writeFile(m_first.path() / ".config" / "burnwick" / "burnwick.json", R"({"keepHistory": true})");
    EXPECT_EQ(Program(m_first.path())
                  .withStandardInput(m_file)
                  .run({QStringLiteral("--import-history"), QStringLiteral("-")})
                  .output,
              "Imported 1 message; 3 messages were known already.\n");
    EXPECT_EQ(history(m_first), history(m_second));
}

TEST_F(HistoryFile, AFailureHasOneLineAndImportsNothing) {
    ASSERT_NE(output(m_first, "export", m_file), "");
    const fs::path malformed = m_first.path() / "malformed.csv";
    writeFile(malformed, bytesOf(m_file) + "x\n");
    const struct {
        const LogHome &home;
        const char *option;
        std::string file;
        const char *error;
    } rows[] = {
        {m_first, "import", m_file, "nothing is imported: turn on \"Keep history\""},
        {m_second, "import", malformed, ": line 5: the number of cells is 1 instead of 22"},
        {m_second, "import", m_first.path() / "missing.csv", ": No such file or directory"},
        {m_second, "import", m_first.path(), "cannot read "},
        {m_second, "import", "\n\033", "cannot read \uFFFD\uFFFD: "},
        {m_first, "export", m_first.path() / "missing" / "history.csv", "cannot write "},
        {m_first, "export", m_first.path(), "cannot write "},
        {m_first, "export", "/dev/full", "cannot write /dev/full: No space left on device"},
    };
    const std::string before = history(m_second);
    for (const auto &[home, option, file, error] : rows) {
        SCOPED_TRACE(error);
        const Outcome outcome = run(home, option, file);
        EXPECT_EQ(outcome.exitCode, 1);
        EXPECT_EQ(outcome.output, "");
        EXPECT_TRUE(outcome.errors.starts_with("burnwick-report: ")) << outcome.errors;
        EXPECT_NE(outcome.errors.find(error), std::string::npos) << outcome.errors;
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
    }
    EXPECT_EQ(history(m_second), before);
}

TEST_F(HistoryFile, AFailedExportLeavesTheOldFileAndNoOther) {
    const test::TemporaryDirectory folder;
    const fs::path file = folder.path() / "history.csv";
    writeFile(file, "old");
    Ledger ledger(m_first.path() / "data");
    static_cast<void>(JSONLParser(m_first.path(), 1).parseAllEntries(nullptr, &ledger));
    // As on a full disk.
    std::signal(SIGXFSZ, SIG_IGN);
    rlimit limit{};
    ASSERT_EQ(::getrlimit(RLIMIT_FSIZE, &limit), 0);
    const rlimit few{historyCsvHeader().size() - 1, limit.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &few), 0);
    EXPECT_THROW(static_cast<void>(exportHistory(ledger, QString::fromStdString(file))), std::runtime_error);
    ASSERT_EQ(::setrlimit(RLIMIT_FSIZE, &limit), 0);
    EXPECT_EQ(bytesOf(file), "old");
    EXPECT_EQ(test::entriesOf(folder.path()), 1);
}

} // namespace
} // namespace burnwick
