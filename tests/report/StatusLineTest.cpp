// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ledger/Ledger.h"
#include "model/Clock.h"
#include "model/Timestamp.h"
#include "report/ReportChild.h"
#include "report/StatusLineTitle.h"
#include "report/TimedInput.h"
#include "statusline/LatestLimits.h"
#include "support/JsonMembers.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using test::Outcome;
using test::Program;
using test::usageLine;

const QStringList statusLine{QStringLiteral("--statusline")};

Instant now() {
    return SystemClock().now();
}

std::string secondsUntil(std::chrono::hours hours) {
    return std::to_string(std::chrono::floor<std::chrono::seconds>(now() + hours).time_since_epoch().count());
}

/// The input as the assistant writes it.
std::string inputWith(const std::string &limits) {
    return R"({"hook_event_name":"Status","session_id":"2a0b","transcript_path":"/home/x/.claude/t.jsonl",
        "cwd":"/x","model":{"id":"claude-opus-4-5","display_name":"Opus 4.5"},"version":"2.1.90",
        "workspace":{"current_dir":"/x","project_dir":"/x"},"output_style":{"name":"default"},
        "cost":{"total_cost_usd":0.01234,"total_duration_ms":45000,"total_lines_added":156},
        "context_window":{"used_percentage":8.5},"exceeds_200k_tokens":false,"rate_limits":)" +
           limits + "}";
}

std::string usualInput() {
    return inputWith(R"({"five_hour":{"used_percentage":67.4,"resets_at":)" + secondsUntil(2h) +
                     R"(},"seven_day":{"used_percentage":41,"resets_at":)" + secondsUntil(100h) + "}}");
}

/// A home with one log, whose title is "1.5K | $0.01".
struct StatusLineProgram : testing::Test {
    StatusLineProgram() { home.add("p/one.jsonl", usageLine("2026-01-31T12:00:00.000Z", 1000, 500), now()); }

    /// Returns the answer to the input, without colours.
    [[nodiscard]] Outcome answerTo(const std::string &input) const {
        return Program(home.path()).set("NO_COLOR", "1").runWithInput(statusLine, input);
    }
    /// Waits for the background process.
    std::vector<Limit> recorded() const {
        std::vector<Limit> limits;
        EXPECT_TRUE(waitFor([&] {
            limits = LatestLimits(data).read(now());
            return !limits.empty();
        }));
        return limits;
    }
    [[nodiscard]] bool hasFiles() const { return fs::exists(home.path() / ".local") || fs::exists(cache); }

    test::LogHome home;
    fs::path data = home.path() / ".local" / "share" / "burnwick";
    fs::path cache = home.path() / ".cache";
};

TEST_F(StatusLineProgram, PrintsTheTitleInColorsAndKeepsTheLimits) {
    const std::string colored = "\033[1m1.5\033[0mK\033[2m | \033[0m$\033[1m0.01\033[0m\033[2m | \033[0m"
                                "\033[2ms\033[0m\033[1m67%\033[0m  \033[33m●\033[0m\n";
    const Outcome outcome = Program(home.path()).runWithInput(statusLine, usualInput());
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output, colored);
    EXPECT_EQ(outcome.errors, "");
    const auto limits = recorded();
    ASSERT_EQ(limits.size(), 2U);
    EXPECT_EQ(limits[0].usedPct, 67.4);
    EXPECT_EQ(limits[1].kind, Limit::Kind::weekly);
    EXPECT_LT(now() - limits[0].observedAt, 1min);

    const std::string plain = "1.5K | $0.01 | s67%  ●";
    EXPECT_EQ(answerTo(usualInput()).output, plain + '\n');
    EXPECT_NE(Program(home.path())
                  .set("COLORTERM", "truecolor")
                  .runWithInput(statusLine, usualInput())
                  .output.find("38;2;252;189;46m●"),
              std::string::npos);
    EXPECT_EQ(answerTo(inputWith("null")).output, "1.5K | $0.01 | s--  ●\n");

    test::writeFile(home.path() / "input", usualInput());
    const std::string shown =
        Program(home.path()).set("NO_COLOR", "1").runInTerminal("--statusline <~/input").output;
    EXPECT_EQ(shown, plain + "\r\n");
}

TEST_F(StatusLineProgram, TheReportHasTheLimitsFromTheFileAndFromTheLedger) {
    Program(home.path()).runWithInput(statusLine, usualInput());
    const auto json = [this] {
        const Outcome outcome = Program(home.path()).run({QStringLiteral("--json")});
        EXPECT_EQ(outcome.errors, "");
        return test::jsonObject(outcome.output);
    };
    const char *expected = R"({"title": "1.5K | $0.01 | s--  ●", "quota": null, "limits": [
        {"kind": "session", "usedPct": 67.4, "forecastPct": null}, {"kind": "weekly", "usedPct": 41}]})";
    ASSERT_TRUE(waitFor([this] { return Ledger(data).lastLimits(now()).size() == 2; }));
    const std::string file = test::bytesOf(data / "limits.json");
    fs::remove(data / "limits.json");
    test::expectMembers(json(), expected);
    fs::remove_all(data);
    test::writeFile(data / "limits.json", file);
    test::expectMembers(json(), expected);
}

TEST_F(StatusLineProgram, TheReportForecastsWithTheTokensSinceTheLastSample) {
    // The first answer used 10 %. The second one came after the last sample; no more are expected.
    home.add("p/two.jsonl",
             usageLine(printTimestamp(now() - 2h, 3), 1000, 0) +
                 usageLine(printTimestamp(now() - 1min, 3), 1000, 0),
             now());
    const Limit first{Limit::Kind::session, {}, 10, now() + 2min, now() - 3h};
    Limit last = first;
    last.usedPct = 20;
    last.observedAt = now() - 5min;
    Ledger ledger(data);
    ASSERT_TRUE(ledger.recordLimits({&first, 1}));
    ASSERT_TRUE(ledger.recordLimits({&last, 1}));
    const auto output = [this](const QString &form) { return Program(home.path()).run({form}).output; };
    const double low = test::jsonObject(output(
        QStringLiteral("--json")))[QStringLiteral("limits")][0][QStringLiteral("forecastLow")]
                           .toDouble();
    EXPECT_NEAR(low, 30, 1);
    for (const char *form : {"--waybar", "--genmon"})
        EXPECT_NE(output(QString::fromUtf8(form)).find("Session: Probably 3"), std::string::npos) << form;
}

TEST_F(StatusLineProgram, AnswersBadInputWithAnEmptyLineAndWritesNothing) {
    const std::pair<const char *, std::string> rows[] = {
        {"empty", ""},
        {"garbage", "garbage"},
        {"truncated", usualInput().substr(0, 400)},
        {"more than a megabyte", usualInput() + std::string(1 << 20, ' ')},
        {"NaN", inputWith(R"({"five_hour":{"used_percentage":NaN}})")},
        {"an array", "[" + usualInput() + "]"},
        {"a text", "\"text\""},
        {"NUL", std::string(100, '\0')},
    };
    for (const auto &[what, input] : rows) {
        const Outcome outcome = answerTo(input);
        EXPECT_EQ(outcome.exitCode, 0) << what;
        EXPECT_EQ(outcome.output, "\n") << what;
        EXPECT_EQ(outcome.errors, "") << what;
    }
    EXPECT_EQ(Program(home.path()).runInTerminal("--statusline").output, "\r\n");
    EXPECT_EQ(Program(home.path()).runInTerminal("--statusline -- echo x").output, "\r\n");
    EXPECT_EQ(Program(home.path()).run(statusLine).output, "\n") << "its input does not end";
    EXPECT_FALSE(hasFiles());
    EXPECT_NE(answerTo("{\"rate_limits\": 5}").output, "\n");
    EXPECT_FALSE(fs::exists(data / "limits.json")) << "there was nothing to keep";
}

TEST_F(StatusLineProgram, AnswersWhereItCanNeitherWriteNorReadSettings) {
    test::writeFile(home.path() / ".config" / "burnwick" / "burnwick.json", "garbage");
    test::writeFile(home.path() / "file", "no folder");
    const std::string file = home.path() / "file";
    const Outcome outcome = Program(home.path())
                                .set("XDG_DATA_HOME", file.c_str())
                                .set("XDG_CACHE_HOME", file.c_str())
                                .set("NO_COLOR", "1")
                                .runWithInput(statusLine, usualInput());
    EXPECT_EQ(outcome.exitCode, 0);
    EXPECT_EQ(outcome.output, "1.5K | $0.01 | s67%  ●\n");
    EXPECT_EQ(outcome.errors, "");
}

TEST_F(StatusLineProgram, ACommandGetsTheInputAndItsOutputAndEndPassUnchanged) {
    const std::string large = usualInput() + std::string(3 << 20, ' ');
    const std::string usual = usualInput(), bytes("\0\xff\n", 3);
    const struct {
        const char *what;
        std::vector<const char *> command;
        std::string input, output, errors;
        int exitCode, signal = 0;
    } rows[] = {
        {"its input", {"cat"}, usual, usual, "", 0},
        {"an input above the limit", {"cat"}, large, large, "", 0},
        {"malformed input", {"cat"}, bytes, bytes, "", 0},
        {"streams and status", {"sh", "-c", "echo one; echo two >&2; exit 7"}, usual, "one\n", "two\n", 7},
        {"arguments", {"printf", "<%s>", "a b", "--", ""}, usual, "<a b><--><>", "", 0},
        {"a signal", {"sh", "-c", "kill -TERM $$"}, usual, "", "", -1, SIGTERM},
        {"a closed pipe ends it as usual",
         {"sh", "-c", "sh -c 'yes; echo $? >&2' | head -c 2"},
         usual,
         "y\n",
         "141\n",
         0},
        {"an input that it does not read", {"true"}, large, "", "", 0},
        {"large output", {"head", "-c", "5000000", "/dev/zero"}, usual, std::string(5'000'000, '\0'), "", 0},
        {"a missing command", {"/no/such"}, usual, "\n", "", 0},
        {"a file that is no program", {"/etc/passwd"}, usual, "\n", "", 0},
    };
    for (const auto &row : rows) {
        QStringList arguments = statusLine + QStringList{QStringLiteral("--")};
        for (const char *argument : row.command)
            arguments << QString::fromUtf8(argument);
        const Outcome outcome = Program(home.path()).runWithInput(arguments, row.input);
        EXPECT_EQ(outcome.exitCode, row.exitCode) << row.what;
        EXPECT_EQ(outcome.signal, row.signal) << row.what;
        EXPECT_TRUE(outcome.output == row.output) << row.what << outcome.output.substr(0, 200);
        EXPECT_EQ(outcome.errors, row.errors) << row.what;
    }
    EXPECT_EQ(recorded().front().usedPct, 67.4);
}

/// The deadline is over before the logs are read.
TEST_F(StatusLineProgram, ALateReadingIsShownNextTime) {
    const TitleSources sources{{home.projects()}, data, false, FigureChoice::asLogged, cache / "title.json"};
    const auto figures = [&] { return titleFigures(sources, SystemClock(), {}); };
    EXPECT_EQ(figures(), std::nullopt);
    ASSERT_TRUE(waitFor([&] { return fs::exists(sources.cacheFile); }));
    const auto known = figures();
    ASSERT_TRUE(known);
    EXPECT_EQ(known->tokens, (SessionTokens{1000, 500}));

    std::array<int, 2> pipe{}; // which background processes close at their end
    ASSERT_EQ(::pipe(pipe.data()), 0);
    // Another process reads the logs meanwhile.
    const int folder = ::open(home.projects().c_str(), O_RDONLY);
    ASSERT_TRUE(waitFor([&] { return ::flock(folder, LOCK_EX | LOCK_NB) == 0; }));
    const std::string bytes = test::bytesOf(sources.cacheFile);
    const std::pair<const char *, std::string> rows[] = {
        {"old", QByteArray::fromStdString(bytes).replace("\"readAt\": 1", "\"readAt\": ").toStdString()},
        {"negative", QByteArray::fromStdString(bytes).replace("1000", "-1").toStdString()},
        {"huge", QByteArray::fromStdString(bytes).replace("1000", "9000000000000000000").toStdString()},
        {"torn", bytes.substr(0, 50)},
    };
    for (const auto &[what, cached] : rows) {
        test::writeFile(sources.cacheFile, cached);
        EXPECT_EQ(figures(), std::nullopt) << what;
    }
    test::writeFile(sources.cacheFile, bytes);
    EXPECT_EQ(figures(), known);
    ::close(pipe[1]);
    EXPECT_TRUE(readUntil(std::chrono::steady_clock::now() + 10s, pipe[0], 1).isComplete)
        << "background processes wait for the lock although nobody waits for them";
    ::close(pipe[0]);
    ::close(folder);
}

} // namespace
} // namespace burnwick
