// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeStatusNotifierWatcher.h"
#include "support/LogTreeFixture.h"
#include "support/ScriptedServer.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QProcess>

#include <fstream>
#include <sstream>

namespace burnwick {
namespace {

using test::ScriptedAnswer;

ScriptedAnswer answerOf(int status, const QByteArray &body) {
    ScriptedAnswer answer;
    answer.status = status;
    answer.body = body;
    return answer;
}

ScriptedAnswer usage(int pct) {
    return answerOf(200, R"({"five_hour":{"utilization":)" + QByteArray::number(pct) +
                             R"(,"resets_at":"2026-01-01T00:00:00Z"},"seven_day":{"utilization":1}})");
}

/// The real program with a login, the vendor's services played on loopback, seen from a status area.
class AccountTest : public testing::Test {
protected:
    AccountTest() {
        test::writeFile(
            m_credentials,
            R"({"mcpOAuth":{"n":9007199254740993},"claudeAiOauth":{"accessToken":"old-token",)"
            R"("refreshToken":"refresh-token","expiresAt":4102444800000,"scopes":["user:inference"]}})");
        test::writeFile(m_home.path() / ".config/burnwick/burnwick.json",
                        R"({"apiBaseURL":")" + m_server.url().toString().toStdString() +
                            R"(","statusBaseURL":")" + m_server.url().toString().toStdString() + R"("})");
        m_server.script("/api/v2/components.json", {answerOf(200, R"({"components":[]})")});
    }
    ~AccountTest() override {
        m_program.terminate();
        m_program.waitForFinished();
    }

    bool startProgram() {
        m_watcher.takeName("panel-6-systray");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        const QString home = QString::fromStdString(m_home.path().string());
        environment.insert(QStringLiteral("HOME"), home);
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), home + QStringLiteral("/.config"));
        m_program.setProcessEnvironment(environment);
        m_program.setProcessChannelMode(QProcess::MergedChannels);
        m_program.start(QStringLiteral(BURNWICK_PROGRAM), QStringList());
        return m_watcher.waitForItems(1);
    }
    bool itemShows(const char *title) {
        return waitFor([&] {
            return m_watcher.readItem().value(QStringLiteral("Title")).toString() == QString::fromUtf8(title);
        });
    }
    [[nodiscard]] std::string credentials() const {
        std::ostringstream text;
        text << std::ifstream(m_credentials).rdbuf();
        return text.str();
    }

    test::LogHome m_home;
    std::filesystem::path m_credentials = m_home.path() / ".claude" / ".credentials.json";
    test::ScriptedServer m_server;
    FakeStatusNotifierWatcher m_watcher;
    QProcess m_program;
};

TEST_F(AccountTest, ARejectedTokenIsRenewedAndTheQuotaShown) {
    m_server.script("/api/oauth/usage", {answerOf(401, "{}"), usage(67)});
    m_server.script(
        "/api/oauth/token",
        {answerOf(200, R"({"access_token":"new-token","refresh_token":"next","expires_in":3600})")});
    ASSERT_TRUE(startProgram());
    EXPECT_TRUE(itemShows("0 | $0.00 | s67%  ●"));

    const auto asked = m_server.requestsFor("/api/oauth/usage");
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].header("Authorization"), "Bearer old-token");
    EXPECT_EQ(asked[1].header("Authorization"), "Bearer new-token");
    const std::string stored = credentials();
    for (const char *kept :
         {R"("n":9007199254740993)", R"("scopes":["user:inference"])", R"("new-token")", R"("next")"})
        EXPECT_NE(stored.find(kept), std::string::npos) << kept << " in " << stored;
    EXPECT_EQ(stored.find("old-token"), std::string::npos);

    m_program.terminate();
    ASSERT_TRUE(m_program.waitForFinished());
    const QByteArray said = m_program.readAll();
    for (const char *secret : {"old-token", "new-token", "refresh-token"})
        EXPECT_FALSE(said.contains(secret)) << said.toStdString();
}

TEST_F(AccountTest, AnOutageAtTheStartLeavesTheTitleWithoutQuota) {
    m_server.script("/api/oauth/usage", {answerOf(500, "<html>down</html>")});
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(waitFor([&] { return !m_server.requestsFor("/api/oauth/usage").empty(); }));
    EXPECT_TRUE(itemShows("0 | $0.00 | s--  ●"));
}

TEST_F(AccountTest, QuittingWhileARequestRunsEndsAtOnce) {
    ScriptedAnswer silence;
    silence.ending = ScriptedAnswer::Ending::silence;
    m_server.script("/api/oauth/usage", {silence});
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(waitFor([&] { return !m_server.requestsFor("/api/oauth/usage").empty(); }));
    m_program.terminate();
    ASSERT_TRUE(m_program.waitForFinished(5'000)) << "the request's deadline is ten seconds";
    EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(m_program.exitCode(), 0);
}

} // namespace
} // namespace burnwick
