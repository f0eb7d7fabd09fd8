// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"

#include <QTcpServer>

using namespace std::chrono_literals;

namespace burnwick {
namespace {

using test::bytesOf;
using test::usage;

class AccountTest : public test::AccountFixture {};
class AccountOverTimeTest : public test::TimedFixture {};

TEST_F(AccountTest, ARejectedTokenIsRenewedAndTheQuotaShown) {
    logIn();
    m_server.script("/api/oauth/usage", {{401, "{}"}, usage(67)});
    m_server.script("/api/oauth/token",
                    {{200, R"({"access_token":"new-token","refresh_token":"next","expires_in":3600})"}});
    ASSERT_TRUE(startProgram());
    EXPECT_TRUE(itemShows("0 | $0.00 | s67%  ●"));

    const auto requests = m_server.requestsFor("/api/oauth/usage");
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].header("Authorization"), "Bearer old-token");
    EXPECT_EQ(requests[1].header("Authorization"), "Bearer new-token");
    const std::string stored = bytesOf(m_credentials);
    for (const char *kept :
         {R"("n":9007199254740993)", R"("scopes":["user:inference"])", R"("new-token")", R"("next")"})
        EXPECT_NE(stored.find(kept), std::string::npos) << kept << " in " << stored;
    EXPECT_EQ(stored.find("old-token"), std::string::npos);

    EXPECT_TRUE(endsAt(SIGTERM));
    const QByteArray output = m_program.readAll();
    for (const char *secret : {"old-token", "new-token", "refresh-token"})
        EXPECT_FALSE(output.contains(secret)) << output.toStdString();
}

TEST_F(AccountOverTimeTest, OutagesLeaveTheTitleAsItIsUntilTheServiceIsBack) {
    const test::ScriptedAnswer outage{500, "<html>down</html>"};
    m_server.script("/api/oauth/usage", {outage, usage(67), outage, usage(81)});
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(waitFor([this] { return usageRequests() == 1; }));
    EXPECT_TRUE(itemShows("0 | $0.00 | s--  ●"));
    pass(5min);
    ASSERT_TRUE(itemShows("0 | $0.00 | s67%  ●"));

    pass(5min);
    // Reading the title wakes the program, whose timers then see the new time.
    ASSERT_TRUE(waitFor([this] {
        EXPECT_EQ(title(), QStringLiteral("0 | $0.00 | s67%  ●"));
        return usageRequests() == 3;
    }));
    EXPECT_TRUE(itemShows("0 | $0.00 | s67%  ●"));
    pass(5min);
    EXPECT_TRUE(itemShows("0 | $0.00 | s81%  ●"));
}

TEST_F(AccountOverTimeTest, ATokenAboutToExpireIsRenewedBeforeItIsSent) {
    logIn(std::chrono::system_clock::now() + 9min);
    m_server.script("/api/oauth/usage", {usage(67), usage(68)});
    m_server.script("/api/oauth/token", {{200, R"({"access_token":"new-token","expires_in":3600})"}});
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(itemShows("0 | $0.00 | s67%  ●"));

    pass(5min);
    EXPECT_TRUE(itemShows("0 | $0.00 | s68%  ●"));
    const auto requests = m_server.requestsFor("/api/oauth/usage");
    ASSERT_EQ(requests.size(), 2U);
    EXPECT_EQ(requests[0].header("Authorization"), "Bearer old-token");
    EXPECT_EQ(requests[1].header("Authorization"), "Bearer new-token");
    EXPECT_NE(bytesOf(m_credentials).find(R"("refresh-token")"), std::string::npos)
        << "lost although the answer had no new one";
}

TEST_F(AccountTest, ASlowProxyScriptDelaysNeitherTheWindowNorTheEnd) {
    QTcpServer silentServer; // of the proxy script
    ASSERT_TRUE(silentServer.listen(QHostAddress::LocalHost));
    const QString script = QStringLiteral("pac+http://127.0.0.1:%1/p.pac").arg(silentServer.serverPort());
    set({{"http_proxy", script}, {"https_proxy", script}});
    logIn();
    writeSettings(QUrl(QStringLiteral("https://192.0.2.1"))); // reserved for documentation: unreachable
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(waitFor([&] { return silentServer.hasPendingConnections(); })) << "script not requested";
    EXPECT_TRUE(itemShows("0 | $0.00 | s--  ●"));
    EXPECT_TRUE(endsAt(SIGTERM));
}

} // namespace
} // namespace burnwick
