// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Clock.h"
#include "model/Timestamp.h"
#include "model/Version.h"
#include "report/ReportChild.h"
#include "support/HostileTexts.h"
#include "support/JsonMembers.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <sstream>

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

QJsonObject jsonOf(Program &&program, const QStringList &more = {}) {
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

TEST_F(ReportProgram, CountsTheLogs) {
    const QJsonObject root = jsonOf(Program(m_home.path()));
    EXPECT_EQ(root[QStringLiteral("version")].toString().toStdString(), version());
    expectMembers(root, R"({
        "title": "4.6K | $0.0066 | s--  ●",
        "session": {
            "hasJSONLData": true, "input": 300, "output": 300, "cacheCreation": 10, "cacheRead": 4000,
            "total": 4610, "cost": 0.0066375, "burnRateTokensPerMin": 30, "projectedTodayCost": 0.3888,
            "projectedWeeklyCost": 2.7216, "projectedMonthlyCost": 11.664
        },
        "history": {
            "sessionCount": 3, "messageCount": 4, "activeDays": 2, "longestStreak": 2,
            "totalTokens": {"total": 6610}, "favoriteModel": "claude-opus-4-5",
            "modelStats": [{"inputTokens": 1100, "percentage": 82.5}, {"name": "claude-sonnet-4-5"}]
        }
    })");
}

TEST_F(ReportProgram, TellsDaysAndHoursInTheUsersZone) {
    Program program(m_home.path());
    program.set("TZ", "Pacific/Auckland");
    expectMembers(
        jsonOf(std::move(program)),
        R"({"history": {"peakHour": 1, "dailyActivity": {"2026-01-31": 2000, "2026-02-01": 4610}}})");
}

TEST(ReportProgramPeriods, CutTheHistoryButNotTheSession) {
    const LogHome home;
    home.add("p/old.jsonl", usageLine(stamp(now() - 40 * 24h), 1, 0), now() - 40 * 24h);
    home.add("p/new.jsonl",
             usageLine(stamp(now() - 20 * 24h), 10, 0) + usageLine(stamp(now() - 25h), 100, 0) +
                 usageLine(stamp(now() - 1h), 1000, 0),
             now());
    expectMembers(jsonOf(Program(home.path()), {QStringLiteral("--filter"), QStringLiteral("7d")}), R"({
        "session": {"input": 1110},
        "history": {"timeFilter": "7d", "sessionCount": 1, "messageCount": 2, "currentStreak": 2,
                    "totalTokens": {"input": 1100}}
    })");
}

TEST(ReportProgramWithoutLogs, ShowsZeros) {
    const test::TemporaryDirectory home;
    expectMembers(jsonOf(Program(home.path())),
                  R"({"session": {"hasJSONLData": false}, "history": {"sessionCount": 0}})");
    EXPECT_EQ(Program(home.path()).run({QStringLiteral("--title")}).output, "0 | $0.00 | s--  ●\n");
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
    EXPECT_EQ(Program(m_home.path()).set("TERM", "xterm").run().output.find('\033'), std::string::npos);

    const std::string colored = Program(m_home.path()).set("TERM", "xterm").runInTerminal().output;
    EXPECT_NE(colored.find("\033[1mBurnwick\033[0m"), std::string::npos) << colored;
    EXPECT_NE(colored.find("\033[32m●"), std::string::npos) << colored;

    const std::string plain =
        Program(m_home.path()).set("TERM", "xterm").set("NO_COLOR", "1").runInTerminal().output;
    EXPECT_NE(plain.find("Burnwick"), std::string::npos);
    EXPECT_EQ(plain.find('\033'), std::string::npos) << plain;
}

/// The text within a JSON string, all of it escaped.
std::string jsonEscaped(const std::string &text) {
    std::string escaped;
    for (const QChar c : QString::fromStdString(text))
        escaped += QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0')).toStdString();
    return escaped;
}

TEST_F(ReportProgram, PassesNothingOnFromTheLogsThatATerminalOrABarObeys) {
    std::string lines = usageLine("2026-01-31T12:00:00.000Z", 1, 1, 0, 0, R"(\ud800<b>\udc00)");
    for (const auto &hostile : test::hostileTexts())
        lines += usageLine("2026-01-31T12:00:00.000Z", 1, 1, 0, 0, jsonEscaped(hostile.text));
    m_home.add("p/evil\n\033[2J\u202e<b>.jsonl", lines, now());
    for (const char *form : {"--filter=all", "--json", "--title", "--waybar", "--genmon"}) {
        const Outcome outcome = Program(m_home.path()).run({QString::fromUtf8(form)});
        EXPECT_EQ(outcome.exitCode, 0) << form;
        EXPECT_EQ(outcome.errors, "");
        for (std::istringstream output(outcome.output); std::getline(output, lines);)
            EXPECT_FALSE(test::hasControls(lines)) << form;
        if (std::string_view(form) != "--json" && std::string_view(form) != "--filter=all") {
            EXPECT_LT(outcome.output.size(), 2'000U) << form;
            EXPECT_EQ(outcome.output.find("src=x"), std::string::npos) << form;
        }
    }
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
