// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "async/DetachedTask.h"
#include "support/LogCapture.h"
#include "support/StateFixture.h"

#include <QCoreApplication>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::at;
using test::ScriptedAnswer;

constexpr const char *usagePath = "/api/oauth/usage";
constexpr const char *tokenPath = "/api/oauth/token";
constexpr const char *statusPath = "/api/v2/components.json";

ScriptedAnswer answerOf(int status, const QByteArray &body = "{}") {
    return {status, body};
}

ScriptedAnswer usage(double pct, const char *resetsAt = "2025-06-10T15:00:00.123456+00:00",
                     const QByteArray &extra = "null") {
    return answerOf(
        200, R"({"five_hour":{"utilization":)" + QByteArray::number(pct) + R"(,"resets_at":")" + resetsAt +
                 R"("},"seven_day":{"utilization":31.0,"resets_at":null},"extra_usage":)" + extra + "}");
}

const std::string loginWithoutRefreshToken = R"({"claudeAiOauth":{"accessToken":"old"}})";
const std::string login = R"({"claudeAiOauth":{"accessToken":"old","refreshToken":"refresh"}})";

class AppStateAccountTest : public test::StateFixture {
protected:
    AppStateAccountTest() {
        m_store.blob = login;
        m_server.script(statusPath, {answerOf(500, "no")});
    }

    /// Runs one refresh to its end.
    void refresh(RefreshKind kind) {
        bool done = false;
        (kind == RefreshKind::forced ? m_state.forceRefreshQuota() : m_state.refreshQuota()).then([&done] {
            done = true;
        });
        ASSERT_TRUE(waitFor([&done] { return done; }));
    }
    void connectOnce() {
        m_server.script(usagePath, {usage(67)});
        refresh(RefreshKind::automatic);
        ASSERT_EQ(m_state.oauthStatus(), OAuthStatus::connected);
    }
};

TEST_F(AppStateAccountTest, AStartShowsQuotaExtraUsageAndServiceStatus) {
    m_server.script(
        usagePath,
        {usage(67, "2025-06-10T15:00:00Z",
               R"({"is_enabled":true,"monthly_limit":5000,"used_credits":1240,"utilization":24.8})")});
    m_server.script(
        statusPath,
        {answerOf(200, R"({"components":[{"id":"k8w3r06qmzrp","name":"API","status":"operational"}]})")});
    m_state.start();
    ASSERT_TRUE(waitFor([&] { return m_state.quotaData() && !m_state.claudeStatus().empty(); }));
    EXPECT_EQ(m_state.quotaData()->fiveHourUsagePct, 67);
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::connected);
    EXPECT_EQ(m_state.statusIndicator(), StatusIndicator::orange);
    EXPECT_DOUBLE_EQ(m_state.extraUsage().value().dailySpend, 12.4);
    EXPECT_EQ(m_state.claudeStatus().front().status, ClaudeComponentStatus::Status::operational);

    // An answer without extra usage leaves the last one.
    m_server.script(usagePath, {usage(85)});
    fireQuotaTimer();
    ASSERT_TRUE(waitFor([&] { return m_state.quotaData()->fiveHourUsagePct == 85; }));
    EXPECT_TRUE(m_state.extraUsage());
    EXPECT_EQ(m_state.statusIndicator(), StatusIndicator::red);
    EXPECT_EQ(m_server.requestsFor(statusPath).size(), 1U);
}

TEST_F(AppStateAccountTest, TheStatusIsAskedForUntilItWasAnsweredOnce) {
    const ScriptedAnswer up =
        answerOf(200, R"({"components":[{"id":"k8w3r06qmzrp","name":"API","status":"operational"}]})");
    m_preferences.setAutoRefreshQuota(false);
    m_server.script(usagePath, {usage(67)});
    const auto asked = [this] { return m_server.requestsFor(statusPath).size(); };
    for (const RefreshKind kind : {RefreshKind::automatic, RefreshKind::forced}) {
        m_server.script(statusPath, {answerOf(500), answerOf(503), up});
        const std::size_t before = asked();
        AppState state(services());
        state.start();
        const auto ask = [&] {
            if (kind == RefreshKind::forced)
                runDetached(state.forceRefreshQuota());
            else
                fireQuotaTimer();
        };
        EXPECT_TRUE(waitFor([&] {
            ask();
            return !state.claudeStatus().empty();
        }));
        EXPECT_EQ(asked() - before, 3U) << "a request under way is enough";
        ask();
        bool done = false;
        state.forceRefreshQuota().then([&done] { done = true; });
        ASSERT_TRUE(waitFor([&done] { return done; }));
        EXPECT_EQ(asked() - before, 3U) << "it is known";
    }
}

TEST_F(AppStateAccountTest, TheFirstQuotaIsAwaitedOnceAndWithALogin) {
    const struct {
        const char *what;
        std::optional<std::string> blob;
        bool automatic, awaited;
        ScriptedAnswer answer;
    } rows[] = {
        {"an answer", login, true, true, usage(1)},
        {"a failure", login, true, true, answerOf(500)},
        {"no login", std::nullopt, true, false, usage(1)},
        {"nothing asked for", login, false, false, usage(1)},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        m_store.blob = row.blob;
        m_preferences.setAutoRefreshQuota(row.automatic);
        m_server.script(usagePath, {row.answer});
        AppState state(services());
        EXPECT_FALSE(state.awaitsFirstQuota());
        bool done = false;
        const auto refresh = [&] {
            done = false;
            state.refreshQuota().then([&done] { done = true; });
        };
        refresh();
        EXPECT_EQ(state.awaitsFirstQuota(), row.awaited);
        ASSERT_TRUE(waitFor([&done] { return done; }));
        EXPECT_FALSE(state.awaitsFirstQuota());
        m_store.blob = login;
        refresh();
        EXPECT_FALSE(state.awaitsFirstQuota() && row.automatic) << "the first is over";
        ASSERT_TRUE(waitFor([&done] { return done; }));
    }
}

TEST_F(AppStateAccountTest, EachFailureHasItsOutcome) {
    using enum OAuthStatus;
    const ScriptedAnswer rejected = answerOf(401);
    const QByteArray newToken = R"({"access_token":"new"})";
    const struct {
        const char *what;
        std::optional<std::string> blob;
        std::vector<ScriptedAnswer> usageAnswers, tokenAnswers;
        OAuthStatus automaticWhenConnected, forced;
    } rows[] = {
        {"no login", std::nullopt, {usage(1)}, {}, disconnected, disconnected},
        {"rejected, no refresh token", loginWithoutRefreshToken, {rejected}, {}, expired, expired},
        {"rejected, refresh answers nonsense", login, {rejected}, {answerOf(200, "[]")}, expired, expired},
        {"rejected, refresh token expired", login, {rejected}, {answerOf(400)}, expired, expired},
        {"rejected, refresh meets a passing error", login, {rejected}, {answerOf(503)}, connected, expired},
        {"rejected twice", login, {rejected}, {answerOf(200, newToken)}, expired, expired},
        {"server error", login, {answerOf(500)}, {}, connected, expired},
        {"a page", login, {answerOf(200, "<html>")}, {}, connected, expired},
    };
    for (const auto &row : rows) {
        const auto outcome = [&](RefreshKind kind) {
            m_store.blob = row.blob;
            m_server.script(usagePath, row.usageAnswers);
            m_server.script(tokenPath, row.tokenAnswers);
            refresh(kind);
            m_store.blob = login;
            return m_state.oauthStatus();
        };
        EXPECT_EQ(outcome(RefreshKind::forced), row.forced) << row.what;

        connectOnce();
        EXPECT_EQ(outcome(RefreshKind::automatic), row.automaticWhenConnected) << row.what;
        EXPECT_EQ(m_state.quotaData().value().fiveHourUsagePct, 67) << row.what << ": the last figures stay";
    }
}

TEST_F(AppStateAccountTest, AnOutageIsSaidOnceInTheLog) {
    m_store.blob = login;
    ScriptedAnswer cut = usage(1);
    cut.ending = ScriptedAnswer::Ending::cut;
    m_server.script(usagePath, {cut, cut, usage(1), answerOf(500), cut});
    const test::LogCapture log;
    const auto said = [&log] {
        return log.lines().filter(QStringLiteral("the quota cannot be reached")).size();
    };
    for (const auto expected : {1, 1, 1, 1, 2}) {
        refresh(RefreshKind::forced);
        EXPECT_EQ(said(), expected);
    }
}

TEST_F(AppStateAccountTest, AfterWakingARequestWithoutAnAnswerIsSoonRepeatedForAMinute) {
    using Intervals = std::vector<std::chrono::milliseconds>;
    ScriptedAnswer cut = usage(1);
    cut.ending = ScriptedAnswer::Ending::cut;
    const struct {
        const char *what;
        std::optional<std::chrono::nanoseconds> sinceWaking;
        std::vector<ScriptedAnswer> answers;
        std::size_t repeats;
    } rows[] = {
        {"awake all the time", {}, {cut}, 0},
        {"no network any more", 0s, {cut}, 20},
        {"the network is back soon", 0s, {cut, cut, usage(67)}, 2},
        {"a failure of an hour later", 1h, {cut}, 0},
        {"the service refuses", 0s, {answerOf(429)}, 0},
        {"the answer cannot be read", 0s, {{200, "{"}}, 0},
        {"the clock was set back meanwhile", -1h, {cut}, 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        m_server.script(usagePath, row.answers);
        const auto before = m_server.requestsFor(usagePath).size();
        if (row.sinceWaking) {
            m_state.wakeUp();
            m_clock.advance(*row.sinceWaking);
        }
        refresh(RefreshKind::automatic);
        for (std::size_t i = 0; i < row.repeats; ++i) {
            ASSERT_TRUE(waitFor([this] { return m_scheduler.intervals() == Intervals{3s}; })) << i;
            m_clock.advance(3s);
            m_scheduler.fire(3s);
        }
        EXPECT_TRUE(
            waitFor([&] { return m_server.requestsFor(usagePath).size() == before + 1 + row.repeats; }));
        refresh(RefreshKind::automatic);
        EXPECT_EQ(m_scheduler.intervals(), Intervals());
    }
}

TEST_F(AppStateAccountTest, ARefusedRefreshTokenIsLookedAtAgainOnlyWhenForced) {
    constexpr auto refused = FetchError::Kind::refreshTokenExpired;
    EXPECT_EQ(verdictOn(refused, RefreshKind::automatic), FailureVerdict::expired);
    EXPECT_EQ(verdictOn(refused, RefreshKind::forced), FailureVerdict::dependsOnCredentials);
}

TEST_F(AppStateAccountTest, ALoginThatVanishesDuringAFailureIsDisconnected) {
    m_server.script(usagePath, {test::held(answerOf(500))});
    bool done = false;
    m_state.refreshQuota().then([&done] { done = true; });
    ASSERT_TRUE(waitFor([&] { return !m_server.requests().empty(); }));
    m_store.blob.reset();
    m_server.release();
    ASSERT_TRUE(waitFor([&done] { return done; }));
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::disconnected);
}

TEST_F(AppStateAccountTest, NothingIsAskedAutomaticallyWithThePreferenceOff) {
    m_preferences.setAutoRefreshQuota(false);
    m_server.script(usagePath, {usage(67)});
    m_state.start();
    ASSERT_TRUE(waitFor([&] { return !m_server.requestsFor(statusPath).empty(); }));
    fireQuotaTimer();
    EXPECT_TRUE(m_server.requestsFor(usagePath).empty());
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::unknown);
    refresh(RefreshKind::forced);
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::connected);
}

TEST_F(AppStateAccountTest, OnlyANewWindowResets) {
    const struct {
        const char *what;
        const char *resetsAt;
        bool alertsOn;
        int resets;
    } rows[] = {
        {"the first only begins", "2025-06-10T15:00:04.400Z", true, 0},
        {"the same", "2025-06-10T15:00:04.400Z", true, 0},
        {"the same, wobbling", "2025-06-10T15:00:05.600Z", true, 0},
        {"the same, wobbling", "2025-06-10T14:59:59.900Z", true, 0},
        {"none", "", true, 0},
        {"the next", "2025-06-10T20:00:00.100Z", true, 1},
        {"the same, wobbling", "2025-06-10T20:00:01.900Z", true, 1},
        {"another, alerts off", "2025-06-11T01:00:00.000Z", false, 1},
        {"the same, alerts on again", "2025-06-11T01:00:00.000Z", true, 1},
    };
    for (const auto &row : rows) {
        m_preferences.setSessionResetAlerts(row.alertsOn);
        m_server.script(usagePath, {usage(10, row.resetsAt)});
        refresh(RefreshKind::automatic);
        EXPECT_EQ(m_alerts.resets, row.resets) << row.what << ' ' << row.resetsAt;
    }
}

TEST_F(AppStateAccountTest, QuotaAlertsAreConsideredAnewOnEveryLocalRefresh) {
    m_state.refreshLocalData();
    EXPECT_TRUE(m_alerts.checks.empty()) << "nothing is known yet";
    connectOnce();
    m_preferences.setRateLimitAlerts(false);
    m_state.refreshLocalData();
    ASSERT_EQ(m_alerts.checks.size(), 2U);
    const auto &check = m_alerts.checks.back();
    EXPECT_EQ(check.resetAt, at("2025-06-10T15:00:00.123456Z"));
    EXPECT_TRUE(check.alertAt80Enabled);
    EXPECT_FALSE(check.rateLimitEnabled);
    EXPECT_EQ(check.usagePct, 67);
}

class LoginTest : public AppStateAccountTest {
protected:
    void beginLogin(bool launched) {
        m_state.connect();
        ASSERT_EQ(m_state.oauthStatus(), OAuthStatus::authenticating);
        ASSERT_EQ(m_terminal.commands, std::vector<std::string>{"claude auth login"});
        m_terminal.answer(launched);
    }
    void poll(int times) {
        for (int i = 0; i < times; ++i)
            m_scheduler.fire(2s);
    }
};

TEST_F(LoginTest, ANewTokenConnects) {
    beginLogin(true);
    m_state.connect(); // a second press
    EXPECT_EQ(m_terminal.commands.size(), 1U);
    poll(89);
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::authenticating);
    m_store.blob = R"({"claudeAiOauth":{"accessToken":"new"}})";
    m_server.script(usagePath, {usage(3)});
    poll(1);
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::unknown);
    ASSERT_TRUE(waitFor([&] { return m_state.oauthStatus() == OAuthStatus::connected; }));
    EXPECT_TRUE(m_scheduler.intervals().empty()) << "the polling goes on";
}

TEST_F(LoginTest, TheSameTokenTimesOutAfterNinetyPolls) {
    beginLogin(true);
    poll(89);
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::authenticating);
    poll(1);
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::expired);
    EXPECT_TRUE(m_scheduler.intervals().empty());
    m_state.connect();
    EXPECT_EQ(m_terminal.commands.size(), 2U) << "a login can be tried again";
}

TEST_F(LoginTest, WithoutATerminalTheBrowserOpens) {
    beginLogin(false);
    EXPECT_EQ(m_loginPagesOpened, 1);
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::expired);
}

TEST_F(LoginTest, ASlowStoreIsAskedOnceAtATime) {
    beginLogin(true);
    m_store.holdsReads = true;
    const int before = m_store.reads;
    poll(100);
    EXPECT_EQ(m_store.reads, before + 1);
    m_store.answerReads();
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::authenticating);
}

TEST_F(LoginTest, NoRefreshDisturbsALogin) {
    m_server.script(usagePath, {test::held(usage(67)), answerOf(401)});
    bool done = false;
    m_state.refreshQuota().then([&done] { done = true; });
    ASSERT_TRUE(waitFor([&] { return m_server.requestsFor(usagePath).size() == 1; }));
    beginLogin(true);
    m_state.startOAuthTimer();
    fireQuotaTimer();
    m_server.release();
    ASSERT_TRUE(waitFor([&done] { return done; }));
    EXPECT_EQ(m_server.requestsFor(usagePath).size(), 1U);
    EXPECT_EQ(m_state.quotaData().value().fiveHourUsagePct, 67);
    EXPECT_EQ(m_state.oauthStatus(), OAuthStatus::authenticating);
}

} // namespace
} // namespace burnwick
