// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Clock.h"
#include "model/Timestamp.h"
#include "model/Version.h"
#include "report/ReportChild.h"
#include "support/HostileTexts.h"
#include "support/LogTreeFixture.h"

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>

#include <gtest/gtest.h>

#include <sstream>

#include <fcntl.h>
#include <unistd.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
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
    return QJsonDocument::fromJson(QByteArray::fromStdString(outcome.output)).object();
}

Instant now() {
    return SystemClock().now();
}

std::string stamp(Instant instant) {
    return printTimestamp({instant, 3, std::nullopt, false});
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
    EXPECT_EQ(root[QStringLiteral("title")].toString(), QStringLiteral("4.6K | $0.0066 | s--  ●"));

    const QJsonObject session = root[QStringLiteral("session")].toObject();
    const auto sessionFigure = [&session](const char *key) {
        return session[QLatin1String(key)].toDouble(-1);
    };
    EXPECT_TRUE(session[QStringLiteral("hasJSONLData")].toBool());
    EXPECT_EQ(sessionFigure("input"), 300);
    EXPECT_EQ(sessionFigure("output"), 300);
    EXPECT_EQ(sessionFigure("cacheCreation"), 10);
    EXPECT_EQ(sessionFigure("cacheRead"), 4000);
    EXPECT_EQ(sessionFigure("total"), 4610);
    EXPECT_DOUBLE_EQ(sessionFigure("cost"), 0.0066375);
    EXPECT_DOUBLE_EQ(sessionFigure("burnRateTokensPerMin"), 30);
    EXPECT_DOUBLE_EQ(sessionFigure("projectedTodayCost"), 0.3888);
    EXPECT_DOUBLE_EQ(sessionFigure("projectedWeeklyCost"), 2.7216);
    EXPECT_DOUBLE_EQ(sessionFigure("projectedMonthlyCost"), 11.664);

    const QJsonObject history = root[QStringLiteral("history")].toObject();
    const auto figure = [&history](const char *key) { return history[QLatin1String(key)].toInteger(-1); };
    EXPECT_EQ(figure("sessionCount"), 3);
    EXPECT_EQ(figure("messageCount"), 4);
    EXPECT_EQ(figure("activeDays"), 2);
    EXPECT_EQ(figure("longestStreak"), 2);
    EXPECT_EQ(figure("peakHour"), 12);
    EXPECT_EQ(history[QStringLiteral("totalTokens")][QStringLiteral("total")].toInteger(), 6610);
    EXPECT_EQ(history[QStringLiteral("favoriteModel")].toString(), QLatin1String(opus));
    const QJsonArray models = history[QStringLiteral("modelStats")].toArray();
    ASSERT_EQ(models.size(), 2);
    EXPECT_EQ(models[0][QStringLiteral("inputTokens")].toInteger(), 1100);
    EXPECT_DOUBLE_EQ(models[0][QStringLiteral("percentage")].toDouble(), 82.5);
    EXPECT_EQ(models[1][QStringLiteral("name")].toString(), QLatin1String(sonnet));
}

TEST_F(ReportProgram, TellsDaysAndHoursInTheUsersZone) {
    const struct {
        const char *zone;
        int peakHour;
        QJsonObject days;
    } rows[] = {
        {"UTC", 12, {{QStringLiteral("2026-01-30"), 2000}, {QStringLiteral("2026-01-31"), 4610}}},
        {"Europe/Berlin", 13, {{QStringLiteral("2026-01-31"), 6610}}},
        {"America/New_York", 7, {{QStringLiteral("2026-01-30"), 2000}, {QStringLiteral("2026-01-31"), 4610}}},
        {"Pacific/Auckland", 1, {{QStringLiteral("2026-01-31"), 2000}, {QStringLiteral("2026-02-01"), 4610}}},
    };
    for (const auto &row : rows) {
        Program program(m_home.path());
        program.set("TZ", row.zone);
        const QJsonObject root = jsonOf(std::move(program));
        const QJsonObject history = root[QStringLiteral("history")].toObject();
        EXPECT_EQ(history[QStringLiteral("peakHour")].toInteger(-1), row.peakHour) << row.zone;
        EXPECT_EQ(history[QStringLiteral("dailyActivity")].toObject(), row.days) << row.zone;
    }
}

TEST(ReportProgramPeriods, CutTheHistoryButNotTheSession) {
    const LogHome home;
    home.add("p/old.jsonl", usageLine(stamp(now() - 40 * 24h), 1, 0), now() - 40 * 24h);
    home.add("p/new.jsonl",
             usageLine(stamp(now() - 20 * 24h), 10, 0) + usageLine(stamp(now() - 25h), 100, 0) +
                 usageLine(stamp(now() - 1h), 1000, 0),
             now());
    const struct {
        const char *filter, *name;
        int sessions, messages, input;
    } rows[] = {{"all", "All", 2, 4, 1111}, {"30d", "30d", 1, 3, 1110}, {"7d", "7d", 1, 2, 1100}};
    for (const auto &row : rows) {
        const QJsonObject root =
            jsonOf(Program(home.path()), {QStringLiteral("--filter"), QLatin1String(row.filter)});
        const QJsonObject history = root[QStringLiteral("history")].toObject();
        EXPECT_EQ(history[QStringLiteral("timeFilter")].toString(), QLatin1String(row.name));
        EXPECT_EQ(history[QStringLiteral("sessionCount")].toInteger(-1), row.sessions) << row.filter;
        EXPECT_EQ(history[QStringLiteral("messageCount")].toInteger(-1), row.messages) << row.filter;
        EXPECT_EQ(history[QStringLiteral("totalTokens")][QStringLiteral("input")].toInteger(-1), row.input);
        EXPECT_EQ(history[QStringLiteral("currentStreak")].toInteger(-1), 2) << row.filter;
        EXPECT_EQ(root[QStringLiteral("session")][QStringLiteral("input")].toInteger(-1), 1110);
    }
}

TEST(ReportProgramWithoutLogs, ShowsZeros) {
    const test::TemporaryDirectory home;
    const QJsonObject root = jsonOf(Program(home.path()));
    EXPECT_FALSE(root[QStringLiteral("session")][QStringLiteral("hasJSONLData")].toBool(true));
    EXPECT_EQ(root[QStringLiteral("history")][QStringLiteral("sessionCount")].toInteger(-1), 0);
    EXPECT_EQ(Program(home.path()).run({QStringLiteral("--title")}).output, "0 | $0.00 | s--  ●\n");
    EXPECT_EQ(Program(home.path() / "missing").run().exitCode, 0);
}

TEST_F(ReportProgram, PrintsTheTitleWhateverTheLocale) {
    for (const char *locale : {"C", "C.UTF-8", "de_DE.UTF-8", "nonsense"}) {
        const Outcome outcome = Program(m_home.path()).set("LC_ALL", locale).run({QStringLiteral("--title")});
        EXPECT_EQ(outcome.output, "4.6K | $0.0066 | s--  ●\n") << locale;
        EXPECT_EQ(outcome.errors, "") << locale;
    }
}

TEST_F(ReportProgram, TellsItsVersionAndItsOptions) {
    EXPECT_EQ(Program(m_home.path()).run({QStringLiteral("--version")}).output,
              "burnwick-report " + std::string(version()) + "\n");
    const Outcome help = Program(m_home.path()).run({QStringLiteral("--help")});
    EXPECT_EQ(help.exitCode, 0);
    EXPECT_NE(help.output.find("--waybar"), std::string::npos);
}

TEST_F(ReportProgram, RefusesWrongOptionsInOneLine) {
    for (const QStringList &arguments :
         {QStringList{QStringLiteral("--nonsense")},
          QStringList{QStringLiteral("--title"), QStringLiteral("--json")},
          QStringList{QStringLiteral("--filter"), QStringLiteral("1\n2\033[2J")}}) {
        const Outcome outcome = Program(m_home.path()).set("LC_ALL", "C").run(arguments);
        EXPECT_EQ(outcome.exitCode, 2);
        EXPECT_EQ(outcome.output, "");
        EXPECT_TRUE(outcome.errors.starts_with("burnwick-report: ")) << outcome.errors;
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
        EXPECT_EQ(outcome.errors.find('\033'), std::string::npos);
    }
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
