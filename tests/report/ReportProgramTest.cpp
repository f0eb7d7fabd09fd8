// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Clock.h"
#include "model/Timestamp.h"
#include "model/Version.h"
#include "report/ReportChild.h"
#include "support/JsonMembers.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <unistd.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::expectMembers;
using test::LogHome;
using test::Outcome;
using test::Program;
using test::usageLine;

constexpr auto opus = "claude-opus-4-5";
constexpr auto sonnet = "claude-sonnet-4-5";

QJsonObject jsonOf(Program &program, const QStringList &more = {}) {
    const Outcome outcome = program.run(QStringList{QStringLiteral("--json")} + more);
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.errors, "");
    return test::jsonObject(outcome.output);
}

Instant now() {
    return SystemClock().now();
}

std::string stamp(Instant instant) {
    return printTimestamp(instant, 3);
}

/// Two recent logs and an old one.
class ReportProgram : public testing::Test {
protected:
    ReportProgram() {
        m_home.add("p/one.jsonl",
                   usageLine("2026-01-31T12:00:00.000Z", 100, 50, 10, 1000, opus) + "garbage\n\n" +
                       R"({"type":"user","timestamp":"2026-01-31T12:01:00.000Z"})"
                       "\n" +
                       usageLine("2026-01-31T12:10:00.000Z", 200, 150, 0, 3000, sonnet),
                   now() - 1h);
        m_home.add("q/deep/two.jsonl", usageLine("2026-01-31T12:20:00.000Z", 0, 100, 0, 0, opus),
                   now() - 10min);
        m_home.add("p/three.jsonl", usageLine("2026-01-30T23:30:00.000Z", 1000, 400, 100, 500, opus),
                   now() - 72h);
        m_home.add("p/none.txt", usageLine("2026-01-30T23:30:00.000Z", 1000, 400, 100, 500, opus), now());
    }

    LogHome m_home;
};

TEST_F(ReportProgram, CountsTheLogsByTheUsersDaysAndHours) {
    Program program(m_home.path());
    program.set("TZ", "Pacific/Auckland");
    const QJsonObject root = jsonOf(program);
    EXPECT_EQ(root[QStringLiteral("version")].toString().toStdString(), version());
    expectMembers(root, R"({
        "title": "4.6K | $0.0066 | s--  ●",
        "session": {
            "hasJSONLData": true, "input": 300, "output": 300, "cacheCreation": 10, "cacheRead": 4000,
            "total": 4610, "cost": 0.0066375, "burnRateTokensPerMin": 30, "projectedTodayCost": 0.3888,
            "projectedWeeklyCost": 2.7216, "projectedMonthlyCost": 11.664
        },
        "history": {
            "sessionCount": 3, "messageCount": 4, "activeDays": 2, "longestStreak": 2, "peakHour": 1,
            "dailyActivity": {"2026-01-31": 2000, "2026-02-01": 4610},
            "totalTokens": {"total": 6610}, "favoriteModel": "claude-opus-4-5",
            "modelStats": [{"inputTokens": 1100, "percentage": 82.5}, {"name": "claude-sonnet-4-5"}]
        }
    })");
}

TEST(ReportProgramOnOtherHomes, AFilterCutsTheHistoryButNotTheSession) {
    const LogHome home;
    home.add("p/new.jsonl", usageLine(stamp(now() - 20 * 24h), 10, 0) + usageLine(stamp(now() - 1h), 1000, 0),
             now());
    Program program(home.path());
    expectMembers(jsonOf(program, {QStringLiteral("--filter=7d")}), R"({
        "session": {"input": 1010},
        "history": {"timeFilter": "7d", "messageCount": 1, "totalTokens": {"input": 1000}}
    })");
}

TEST(ReportProgramOnOtherHomes, FiguresAreThoseOfTheOptionOrElseOfThePreference) {
    const auto line = [](Instant at, int output) {
        std::string text = usageLine(stamp(at), 10, output, 0, 0, opus);
        return text.insert(text.find("\"model\""), R"("id":"msg_1",)");
    };
    const LogHome home;
    home.add("p/one.jsonl",
             usageLine(stamp(now() - 20 * 24h), 7, 0, 0, 0, "unknown") + line(now() - 2h, 1) +
                 line(now() - 1h, 90),
             now());
    Program program(home.path());
    const struct {
        const char *settings;
        QString option, title;
        std::int64_t input;
    } rows[] = {
        {"{}", {}, QStringLiteral("118 "), 27},
        {"{}", QStringLiteral("--figures=exact"), QStringLiteral("107 "), 17},
        {R"({"figures": "exact"})", {}, QStringLiteral("107 "), 17},
        {R"({"figures": "exact"})", QStringLiteral("--figures=logged"), QStringLiteral("118 "), 27},
    };
    for (const auto &row : rows) {
        test::writeFile(home.path() / ".config" / "burnwick" / "burnwick.json", row.settings);
        const QStringList options = row.option.isEmpty() ? QStringList() : QStringList{row.option};
        const QJsonObject root = jsonOf(program, options);
        EXPECT_TRUE(root[QStringLiteral("title")].toString().startsWith(row.title)) << row.settings;
        for (const auto &tokens : {root[QStringLiteral("session")],
                                   root[QStringLiteral("history")][QStringLiteral("totalTokens")]})
            EXPECT_EQ(tokens[QStringLiteral("input")].toInteger(), row.input) << row.settings;
        expectMembers(root[QStringLiteral("exact")],
                      R"({"messages": 2, "unpricedTokens": 7, "session": {"input": 17, "output": 90}})");
        const QStringList title = QStringList{QStringLiteral("--title")} + options;
        EXPECT_TRUE(program.run(title).output.starts_with(row.title.toStdString())) << row.settings;
        const QStringList models{QStringLiteral("--models"), QStringLiteral("--csv"),
                                 QStringLiteral("--filter=7d")};
        EXPECT_TRUE(
            program.run(models + options)
                .output.ends_with("\r\n\"claude-opus-4-5\"," + std::to_string(row.input - 7) +
                                  (row.input == 17 ? ",90,0,0,0,0,0.0023,0\r\n" : ",91,,,,,0.0023,0\r\n")))
            << program.run(models + options).output;
    }
}

TEST_F(ReportProgram, ReadsTheFoldersOfEnvironmentAndSettingsOrElseTheNamedOnes) {
    const auto home = m_home.path();
    const auto write = [&](const char *folder, int input) {
        test::writeFile(home / folder / "p" / "log.jsonl", usageLine("2026-01-31T12:00:00.000Z", input, 0));
    };
    write("work/projects", 1'000);
    write(".config/claude/projects", 2'000);
    write("chosen", 4'000);
    test::writeFile(home / ".config/burnwick/burnwick.json",
                    R"({"logFolders": ["~/chosen", "~/gone", ")" + (home / "work").string() + R"("]})");
    const std::string gone = (home / "gone").string() + ": No such folder\n";
    const auto path = [&home](const char *folder) { return QString::fromStdString(home / folder); };
    const struct {
        QStringList options;
        std::int64_t input;
        std::string errors;
    } rows[] = {
        {{}, 300 + 7'000, "burnwick-report: " + gone},
        {{QStringLiteral("--logs"), path("work")}, 1'000, ""},
        {{QStringLiteral("--logs"), path("work"), QStringLiteral("--logs"), path("gone"),
          QStringLiteral("--logs"), path("work/projects")},
         1'000,
         "burnwick-report: " + gone},
    };
    Program program(home);
    program.set("CLAUDE_CONFIG_DIR", ("~/work," + home.string() + "/nowhere").c_str());
    for (int times = 0; times < 2; ++times) { // also with a ledger that knows all of them
        for (const auto &row : rows) {
            const Outcome outcome = program.run(QStringList{QStringLiteral("--json")} + row.options);
            EXPECT_EQ(outcome.errors, row.errors);
            const QJsonObject root = test::jsonObject(outcome.output);
            EXPECT_EQ(root[QStringLiteral("session")][QStringLiteral("input")].toInteger(), row.input);
        }
    }
    const Outcome nothing = program.run({QStringLiteral("--title"), QStringLiteral("--logs"), path("gone")});
    EXPECT_EQ(nothing.errors, "burnwick-report: " + gone + "burnwick-report: no logs can be read\n");
    EXPECT_EQ(nothing.exitCode, 1);
}

TEST(ReportProgramOnOtherHomes, WithoutLogsShowsZeros) {
    const test::TemporaryDirectory home;
    Program program(home.path());
    expectMembers(jsonOf(program), R"({"session": {"hasJSONLData": false}, "history": {"sessionCount": 0}})");
    EXPECT_EQ(program.run({QStringLiteral("--title")}).output, "0 | $0.00 | s--  ●\n");
    EXPECT_EQ(Program(home.path() / "missing").run().exitCode, 0);
}

TEST_F(ReportProgram, RefusesWrongOptionsInOneLine) {
    const QStringList arguments{QStringLiteral("--filter"), QStringLiteral("1\n2\033[2J")};
    const Outcome outcome = Program(m_home.path()).set("LC_ALL", "C").run(arguments);
    EXPECT_EQ(outcome.exitCode, 2);
    EXPECT_EQ(outcome.output, "");
    EXPECT_TRUE(outcome.errors.starts_with("burnwick-report: ")) << outcome.errors;
    EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
    EXPECT_EQ(outcome.errors.find('\033'), std::string::npos);
}

TEST_F(ReportProgram, IsColoredOnATerminalOnly) {
    Program program(m_home.path());
    program.set("TERM", "xterm");
    EXPECT_EQ(program.run().output.find('\033'), std::string::npos);
    const std::string colored = program.runInTerminal().output;
    EXPECT_NE(colored.find("\033[1mBurnwick\033[0m"), std::string::npos) << colored;
    EXPECT_NE(colored.find("\033[32m●"), std::string::npos) << colored;
    const std::string plain = program.set("NO_COLOR", "1").runInTerminal().output;
    EXPECT_NE(plain.find("Burnwick"), std::string::npos);
    EXPECT_EQ(plain.find('\033'), std::string::npos) << plain;
}

TEST_F(ReportProgram, FailsWhenItCannotWrite) {
    const auto fullDisk = [] { return ::open("/dev/full", O_WRONLY); };
    const auto pipeWithoutReader = [] {
        int ends[2] = {-1, -1};
        static_cast<void>(::pipe(ends) == 0 && ::close(ends[0]) == 0);
        return ends[1];
    };
    const Outcome full = Program(m_home.path()).withStandardOutput(fullDisk).run();
    EXPECT_EQ(full.exitCode, 1);
    EXPECT_EQ(full.errors, "burnwick-report: cannot write: No space left on device\n");

    const Outcome closed = Program(m_home.path()).withStandardOutput(pipeWithoutReader).run();
    EXPECT_EQ(closed.exitCode, 1);
    EXPECT_EQ(closed.errors, "");
}

} // namespace
} // namespace burnwick
