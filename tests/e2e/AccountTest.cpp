// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "support/ShiftedTime.h"

#include <QTcpServer>

#include <chrono>

using namespace std::chrono_literals;

namespace burnwick {
namespace {

using test::ScriptedAnswer;

using test::answerOf;
using test::usage;

/// With a login.
class AccountTest : public test::AccountFixture {
protected:
    AccountTest() { logIn(); }
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
    const std::string stored = contentOf(m_credentials);
    for (const char *kept :
         {R"("n":9007199254740993)", R"("scopes":["user:inference"])", R"("new-token")", R"("next")"})
        EXPECT_NE(stored.find(kept), std::string::npos) << kept << " in " << stored;
    EXPECT_EQ(stored.find("old-token"), std::string::npos);

    EXPECT_TRUE(endsWhenTold(SIGTERM));
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

TEST_F(AccountTest, AnOutageLaterLeavesTheLastFiguresUntilTheServiceIsBack) {
    test::ShiftedTime time;
    if (!time.available())
        GTEST_SKIP() << "the clock of a program cannot be moved here";
    m_server.script("/api/oauth/usage", {usage(67), answerOf(500, "<html>down</html>"), usage(81)});
    ASSERT_TRUE(startProgram(time));
    ASSERT_TRUE(itemShows("0 | $0.00 | s67%  ●"));

    time.advance(5min);
    // Asking for the item wakes the program, which then notices how late it is.
    ASSERT_TRUE(waitFor([&] {
        EXPECT_EQ(title(), QStringLiteral("0 | $0.00 | s67%  ●"));
        return m_server.requestsFor("/api/oauth/usage").size() == 2;
    }));
    EXPECT_TRUE(itemShows("0 | $0.00 | s67%  ●"));

    time.advance(5min);
    EXPECT_TRUE(itemShows("0 | $0.00 | s81%  ●"));
}

TEST_F(AccountTest, ATokenAboutToExpireIsRenewedBeforeItIsSent) {
    test::ShiftedTime time;
    if (!time.available())
        GTEST_SKIP() << "the clock of a program cannot be moved here";
    logIn(std::chrono::system_clock::now() + 9min);
    m_server.script("/api/oauth/usage", {usage(67), usage(68)});
    m_server.script("/api/oauth/token", {answerOf(200, R"({"access_token":"new-token","expires_in":3600})")});
    ASSERT_TRUE(startProgram(time));
    ASSERT_TRUE(itemShows("0 | $0.00 | s67%  ●"));

    time.advance(5min);
    EXPECT_TRUE(itemShows("0 | $0.00 | s68%  ●"));
    const auto asked = m_server.requestsFor("/api/oauth/usage");
    ASSERT_EQ(asked.size(), 2U);
    EXPECT_EQ(asked[0].header("Authorization"), "Bearer old-token");
    EXPECT_EQ(asked[1].header("Authorization"), "Bearer new-token");
    EXPECT_NE(contentOf(m_credentials).find(R"("refresh-token")"), std::string::npos) << "none came instead";
}

TEST_F(AccountTest, QuittingWhileARequestRunsEndsAtOnce) {
    ScriptedAnswer silence;
    silence.ending = ScriptedAnswer::Ending::silence;
    m_server.script("/api/oauth/usage", {silence});
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(waitFor([&] { return !m_server.requestsFor("/api/oauth/usage").empty(); }));
    EXPECT_TRUE(endsWhenTold(SIGTERM)) << "the request's deadline is ten seconds";
}

TEST_F(AccountTest, ASlowProxySettingDelaysNeitherTheWindowNorTheEnd) {
    QTcpServer silence; // where the setting's script is said to be
    ASSERT_TRUE(silence.listen(QHostAddress::LocalHost));
    QProcessEnvironment environment = m_program.processEnvironment();
    for (const char *variable : {"http_proxy", "https_proxy"})
        environment.insert(QLatin1String(variable),
                           QStringLiteral("pac+http://127.0.0.1:%1/p.pac").arg(silence.serverPort()));
    m_program.setProcessEnvironment(environment);
    // In a network for documentation: nobody is there.
    test::writeFile(m_settings, R"({"apiBaseURL":"https://192.0.2.1","statusBaseURL":"https://192.0.2.1"})");
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(waitFor([&silence] { return silence.hasPendingConnections(); })) << "nobody asked";
    EXPECT_TRUE(itemShows("0 | $0.00 | s--  ●"));
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

} // namespace
} // namespace burnwick
