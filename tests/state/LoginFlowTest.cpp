// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/StateFixture.h"

#include <algorithm>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::usageAnswer;
using test::usagePath;

class LoginFlowTest : public test::StateFixture {
protected:
    LoginFlowTest() { m_store.blob = R"({"claudeAiOauth":{"accessToken":"old"}})"; }

    void beginLogin() {
        m_state.connect();
        ASSERT_EQ(account().oauthStatus, OAuthStatus::authenticating);
        ASSERT_EQ(m_terminal.commands, std::vector<std::string>{"claude auth login"});
        m_terminal.answer(true);
    }
    void poll(int times) {
        for (int i = 0; i < times; ++i)
            m_scheduler.fire(2s);
    }
};

TEST_F(LoginFlowTest, ANewTokenConnects) {
    beginLogin();
    m_state.connect(); // a second press
    EXPECT_EQ(m_terminal.commands.size(), 1U);
    poll(89);
    EXPECT_EQ(account().oauthStatus, OAuthStatus::authenticating);
    m_store.blob = R"({"claudeAiOauth":{"accessToken":"new"}})";
    m_server.script(usagePath, {usageAnswer(3)});
    poll(1);
    EXPECT_EQ(account().oauthStatus, OAuthStatus::unknown);
    ASSERT_TRUE(waitFor([&] { return account().oauthStatus == OAuthStatus::connected; }));
    EXPECT_EQ(std::ranges::count(m_scheduler.intervals(), 2s), 0) << "the polling goes on";
}

TEST_F(LoginFlowTest, TheSameTokenTimesOutAfterNinetyPolls) {
    beginLogin();
    poll(89);
    EXPECT_EQ(account().oauthStatus, OAuthStatus::authenticating);
    poll(1);
    EXPECT_EQ(account().oauthStatus, OAuthStatus::expired);
    EXPECT_TRUE(m_scheduler.intervals().empty());
    m_state.connect();
    EXPECT_EQ(m_terminal.commands.size(), 2U) << "a login can be tried again";
    m_terminal.answer(false);
    EXPECT_EQ(m_loginPagesOpened, 1) << "without a terminal";
    EXPECT_EQ(account().oauthStatus, OAuthStatus::expired);
}

TEST_F(LoginFlowTest, ASlowStoreIsAskedOnceAtATime) {
    beginLogin();
    m_store.holdsReads = true;
    const int before = m_store.reads;
    poll(100);
    EXPECT_EQ(m_store.reads, before + 1);
    m_store.answerReads();
    EXPECT_EQ(account().oauthStatus, OAuthStatus::authenticating);
}

TEST_F(LoginFlowTest, NoRefreshDisturbsALogin) {
    m_server.script(usagePath, {test::held(usageAnswer(67)), {401}});
    bool done = false;
    m_state.refreshQuota().then([&done] { done = true; });
    ASSERT_TRUE(waitFor([&] { return m_server.requestsFor(usagePath).size() == 1; }));
    beginLogin();
    m_state.refreshQuota().then([&] { m_server.release(); });
    ASSERT_TRUE(waitFor([&done] { return done; }));
    EXPECT_EQ(m_server.requestsFor(usagePath).size(), 1U);
    EXPECT_EQ(account().quotaData.value().fiveHourUsagePct, 67);
    EXPECT_EQ(account().oauthStatus, OAuthStatus::authenticating);
}

TEST_F(LoginFlowTest, ALoginThatBeginsDuringAFailuresLookAtTheCredentialsGoesOn) {
    m_server.script(usagePath, {test::held({500})});
    bool done = false;
    m_state.forceRefreshQuota().then([&done] { done = true; });
    ASSERT_TRUE(waitFor([&] { return m_server.requestsFor(usagePath).size() == 1; }));
    m_store.holdsReads = true;
    const int before = m_store.reads;
    m_server.release();
    ASSERT_TRUE(waitFor([&] { return m_store.reads > before; }));
    m_state.connect();
    m_store.answerReads();
    ASSERT_TRUE(waitFor([&done] { return done; }));
    EXPECT_EQ(account().oauthStatus, OAuthStatus::authenticating);
}

} // namespace
} // namespace burnwick
