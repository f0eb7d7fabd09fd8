// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "report/StatusLineSetup.h"

#include "report/ReportChild.h"
#include "support/JsonMembers.h"
#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace burnwick {
namespace {

namespace fs = std::filesystem;
using test::Outcome;
using test::Program;

struct StatusLineSetupTest : testing::Test {
    test::TemporaryDirectory home;
    fs::path settings = home.path() / ".claude" / "settings.json";
};

TEST_F(StatusLineSetupTest, KeepsWhatIsConfigured) {
    const std::string program = "burnwick-report";
    const struct {
        const char *what, *settings, *advice, *snippet;
    } rows[] = {
        {"no status line", R"({"model": "x"})", "Add this to ",
         R"({"type": "command", "command": "burnwick-report --statusline"})"},
        {"another command",
         R"({"statusLine": {"type": "command", "command": "~/line.sh 'a b'", "padding": 2, "more": {"x": [1]}}})",
         "Replace \"statusLine\" in ",
         R"({"type": "command", "padding": 2, "more": {"x": [1]},
             "command": "burnwick-report --statusline -- sh -c '~/line.sh '\\''a b'\\'''"})"},
        {"a plain word", R"({"statusLine": {"command": "line.sh"}})", "Replace ",
         R"({"type": "command", "command": "burnwick-report --statusline -- sh -c line.sh"})"},
        {"ours", R"({"statusLine": {"command": "'/my x/burnwick-report' --statusline -- sh -c x"}})",
         "already", R"({"command": "'/my x/burnwick-report' --statusline -- sh -c x"})"},
        {"no text", R"({"statusLine": {"type": 1, "command": ["x"], "padding": 0}})", "Replace ",
         R"({"type": "command", "command": "burnwick-report --statusline", "padding": 0})"},
        {"no object", R"({"statusLine": "x"})", "Add this to ",
         R"({"type": "command", "command": "burnwick-report --statusline"})"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        test::writeFile(settings, row.settings);
        const auto setup = statusLineSetup(settings, program);
        EXPECT_NE(setup.advice.find(row.advice), std::string::npos) << setup.advice;
        const QJsonObject snippet = test::jsonObject(setup.snippet);
        EXPECT_EQ(snippet.size(), 1);
        test::expectMembers(snippet[QStringLiteral("statusLine")], row.snippet);
        EXPECT_EQ(test::bytesOf(settings), row.settings);
    }
    test::writeFile(settings, R"({"statusLine": {"command": "\u001b[2J\u202e"}})");
    const auto hostile = statusLineSetup(home.path() / "\033[2J", "a b").advice;
    EXPECT_EQ(hostile.find('\033'), std::string::npos);
    EXPECT_EQ(statusLineSetup(settings, program).snippet.find("\u202e"), std::string::npos);
}

TEST_F(StatusLineSetupTest, TheProgramsSnippetRunsBothCommands) {
    const Outcome missing = Program(home.path()).run({QStringLiteral("--statusline-setup")});
    EXPECT_EQ(missing.exitCode, 0);
    EXPECT_EQ(missing.errors, "Add this to " + settings.string() + ":\n");
    EXPECT_FALSE(fs::exists(settings.parent_path()));

    test::writeFile(settings, R"({"statusLine": {"type": "command",
        "command": "printf '%s\\n' \"it's $HOME\"; cat; exit 3"}})");
    const Outcome outcome = Program(home.path()).run({QStringLiteral("--statusline-setup")});
    EXPECT_EQ(outcome.exitCode, 0);
    const QJsonValue statusLine = test::jsonObject(outcome.output)[QStringLiteral("statusLine")];
    QProcess shell;
    shell.setProcessEnvironment([this] {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("HOME"), QString::fromStdString(home.path()));
        return environment;
    }());
    shell.start(QStringLiteral("sh"),
                {QStringLiteral("-c"), statusLine[QStringLiteral("command")].toString()});
    shell.write("input");
    shell.closeWriteChannel();
    ASSERT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.exitCode(), 3);
    EXPECT_EQ(shell.readAllStandardOutput().toStdString(), "it's " + home.path().string() + "\ninput");
}

TEST_F(StatusLineSetupTest, MalformedSettingsAreNotReplaced) {
    for (const char *bytes : {"", "{", "[]", "{\"statusLine\": {\"command\": \"x\"},}"}) {
        test::writeFile(settings, bytes);
        const Outcome outcome = Program(home.path()).run({QStringLiteral("--statusline-setup")});
        EXPECT_EQ(outcome.exitCode, 1) << bytes;
        EXPECT_EQ(outcome.output, "") << "the user's command would be lost";
        EXPECT_TRUE(outcome.errors.starts_with("burnwick-report: cannot read " + settings.string() + ": "))
            << outcome.errors;
        EXPECT_EQ(outcome.errors.find('\n'), outcome.errors.size() - 1) << outcome.errors;
    }
}

} // namespace
} // namespace burnwick
