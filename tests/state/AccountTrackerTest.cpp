// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "async/DetachedTask.h"
#include "support/LogCapture.h"
#include "support/StateFixture.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::ScriptedAnswer;
using test::statusPath;
using test::tokenPath;
using test::usageAnswer;
using test::usagePath;

ScriptedAnswer answerOf(int status, const QByteArray &body = "{}") {
    return {status, body};
}

const ScriptedAnswer statusUp =
    answerOf(200, R"({"components":[{"id":"k8w3r06qmzrp","name":"API","status":"operational"}]})");
const std::string loginWithoutRefreshToken = R"({"claudeAiOauth":{"accessToken":"old"}})";
const std::string login = R"({"claudeAiOauth":{"accessToken":"old","refreshToken":"refresh"}})";

class AccountTrackerTest : public test::StateFixture {
protected:
    AccountTrackerTest() {
        m_store.blob = login;
        m_server.script(statusPath, {answerOf(500, "no")});
    }

    enum class RefreshKind { automatic, forced };

    /// Runs one refresh to its end; calls `meanwhile` once it is under way.
    void refresh(
        RefreshKind kind, const std::function<void()> &meanwhile = [] {}) {
        bool done = false;
        (kind == RefreshKind::forced ? m_state.forceRefreshQuota() : m_state.refreshQuota()).then([&done] {
            done = true;
        });
        meanwhile();
        ASSERT_TRUE(waitFor([&done] { return done; }));
    }
    void connectOnce() {
        m_server.script(usagePath, {usageAnswer(67)});
        refresh(RefreshKind::automatic);
        ASSERT_EQ(account().oauthStatus, OAuthStatus::connected);
        ASSERT_EQ(account().quotaFailure, "");
    }
};

TEST_F(AccountTrackerTest, AStartShowsQuotaExtraUsageAndServiceStatus) {
    m_server.script(
        usagePath,
        {usageAnswer(67,
                     R"({"is_enabled":true,"monthly_limit":5000,"used_credits":1240,"utilization":24.8})")});
    m_server.script(statusPath, {statusUp});
    m_state.start();
    ASSERT_TRUE(waitFor([&] { return account().quotaData && !account().claudeStatus.empty(); }));
    EXPECT_EQ(account().quotaData->fiveHourUsagePct, 67);
    EXPECT_EQ(account().oauthStatus, OAuthStatus::connected);
    EXPECT_EQ(account().statusIndicator(), StatusIndicator::orange);
    EXPECT_DOUBLE_EQ(account().extraUsage.value().dailySpend, 12.4);
    const Instant start = m_clock.now();
    EXPECT_EQ(account().claudeStatus.front().status, ClaudeComponentStatus::Status::operational);

    // An answer without extra usage leaves the last one.
    m_server.script(usagePath, {usageAnswer(85)});
    m_clock.advance(300s);
    fireQuotaTimer();
    ASSERT_TRUE(waitFor([&] { return account().quotaData->fiveHourUsagePct == 85; }));
    EXPECT_EQ(account().extraUsageReadAt, start);
    EXPECT_EQ(account().quotaReadAt, m_clock.now());
    EXPECT_EQ(account().statusIndicator(), StatusIndicator::red);
    EXPECT_EQ(m_server.requestsFor(statusPath).size(), 1U);
}

TEST_F(AccountTrackerTest, TheStatusIsRequestedUntilTheFirstAnswer) {
    m_preferences.setAutoRefreshQuota(false);
    m_server.script(usagePath, {usageAnswer(67)});
    const auto asked = [this] { return m_server.requestsFor(statusPath).size(); };
    for (const RefreshKind kind : {RefreshKind::automatic, RefreshKind::forced}) {
        m_server.script(statusPath, {answerOf(500), answerOf(503), statusUp});
        const std::size_t before = asked();
        AppState state(services());
        state.start();
        EXPECT_TRUE(waitFor([&] {
            if (kind == RefreshKind::forced)
                runDetached(state.forceRefreshQuota());
            else
                fireQuotaTimer();
            return !state.snapshot().account.claudeStatus.empty();
        }));
        EXPECT_EQ(asked() - before, 3U) << "a request under way is enough";
        bool done = false;
        state.forceRefreshQuota().then([&done] { done = true; });
        ASSERT_TRUE(waitFor([&done] { return done; }));
        EXPECT_EQ(asked() - before, 3U) << "it is known";
    }
}

TEST_F(AccountTrackerTest, TheFirstQuotaIsAwaitedOnceAndWithALogin) {
    const struct {
        const char *what;
        std::optional<std::string> blob;
        bool automatic, awaited;
        ScriptedAnswer answer;
    } rows[] = {
        {"an answer", login, true, true, usageAnswer(1)},
        {"a failure", login, true, true, answerOf(500)},
        {"no login", std::nullopt, true, false, usageAnswer(1)},
        {"nothing asked for", login, false, false, usageAnswer(1)},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        m_store.blob = row.blob;
        m_preferences.setAutoRefreshQuota(row.automatic);
        m_server.script(usagePath, {row.answer});
        AppState state(services());
        EXPECT_FALSE(state.snapshot().account.awaitsFirstQuota);
        bool done = false;
        const auto refresh = [&] {
            done = false;
            state.refreshQuota().then([&done] { done = true; });
        };
        refresh();
        EXPECT_EQ(state.snapshot().account.awaitsFirstQuota, row.awaited);
        ASSERT_TRUE(waitFor([&done] { return done; }));
        EXPECT_FALSE(state.snapshot().account.awaitsFirstQuota);
        m_store.blob = login;
        refresh();
        EXPECT_FALSE(state.snapshot().account.awaitsFirstQuota && row.automatic) << "the first is over";
        ASSERT_TRUE(waitFor([&done] { return done; }));
    }
}

TEST_F(AccountTrackerTest, EachFailureHasItsOutcome) {
    using enum OAuthStatus;
    const ScriptedAnswer rejected = answerOf(401);
    const QByteArray newToken = R"({"access_token":"new"})";
    const struct {
        const char *what;
        std::optional<std::string> blob;
        std::vector<ScriptedAnswer> usageAnswers, tokenAnswers;
        OAuthStatus automaticWhenConnected, forced;
    } rows[] = {
        {"no login", std::nullopt, {usageAnswer(1)}, {}, disconnected, disconnected},
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
            return account().oauthStatus;
        };
        EXPECT_EQ(outcome(RefreshKind::forced), row.forced) << row.what;

        connectOnce();
        EXPECT_EQ(outcome(RefreshKind::automatic), row.automaticWhenConnected) << row.what;
        EXPECT_EQ(account().quotaData.value().fiveHourUsagePct, 67) << row.what << ": the last figures stay";
        EXPECT_NE(account().quotaFailure, "") << row.what;
    }
}

TEST_F(AccountTrackerTest, AnOutageIsLoggedOnce) {
    m_store.blob = login;
    ScriptedAnswer cut = usageAnswer(1);
    cut.ending = ScriptedAnswer::Ending::cut;
    m_server.script(usagePath, {cut, cut, usageAnswer(1), answerOf(500), cut});
    const test::LogCapture log;
    const auto said = [&log] {
        return log.lines().filter(QStringLiteral("the quota cannot be reached")).size();
    };
    for (const auto expected : {1, 1, 1, 1, 2}) {
        refresh(RefreshKind::forced);
        EXPECT_EQ(said(), expected);
    }
}

TEST_F(AccountTrackerTest, AfterWakingARequestWithoutAnAnswerIsSoonRepeatedForAMinute) {
    const auto repeats = [this] { return std::ranges::count(m_scheduler.intervals(), 3s); };
    ScriptedAnswer cut = usageAnswer(1);
    cut.ending = ScriptedAnswer::Ending::cut;
    const struct {
        const char *what;
        std::optional<std::chrono::nanoseconds> sinceWaking;
        std::vector<ScriptedAnswer> answers;
        std::size_t repeats;
    } rows[] = {
        {"awake all the time", {}, {cut}, 0},
        {"no network any more", 0s, {cut}, 20},
        {"the network is back soon", 0s, {cut, cut, usageAnswer(67)}, 2},
        {"a failure of an hour later", 1h, {cut}, 0},
        {"the service refuses", 0s, {answerOf(429)}, 0},
        {"the answer cannot be read", 0s, {{200, "{"}}, 0},
        {"the clock was set back meanwhile", -1h, {cut}, 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        m_server.script(usagePath, row.answers);
        const auto before = m_server.requestsFor(usagePath).size();
        m_clock.advance(2h); // the pause after a refusal
        if (row.sinceWaking) {
            m_state.wakeUp();
            m_clock.advance(*row.sinceWaking);
        }
        refresh(RefreshKind::automatic);
        for (std::size_t i = 0; i < row.repeats; ++i) {
            ASSERT_TRUE(waitFor([&repeats] { return repeats() == 1; })) << i;
            m_clock.advance(3s);
            m_scheduler.fire(3s);
        }
        EXPECT_TRUE(
            waitFor([&] { return m_server.requestsFor(usagePath).size() == before + 1 + row.repeats; }));
        refresh(RefreshKind::automatic);
        EXPECT_EQ(repeats(), 0);
    }
}

TEST_F(AccountTrackerTest, ALoginThatVanishesDuringAFailureIsDisconnectedUnlessTheFailureProvesItExpired) {
    using enum OAuthStatus;
    const ScriptedAnswer refused = answerOf(400);
    const struct {
        RefreshKind kind;
        const char *path;
        ScriptedAnswer answer;
        OAuthStatus status;
    } rows[] = {
        {RefreshKind::forced, usagePath, answerOf(500), disconnected},
        {RefreshKind::forced, tokenPath, refused, disconnected},
        {RefreshKind::automatic, tokenPath, refused, expired},
    };
    for (const auto &row : rows) {
        m_store.blob = login;
        m_server.script(usagePath, {answerOf(401)});
        m_server.script(row.path, {test::held(row.answer)});
        const auto before = m_server.requestsFor(row.path).size();
        refresh(row.kind, [&] {
            ASSERT_TRUE(waitFor([&] { return m_server.requestsFor(row.path).size() > before; }));
            m_store.blob.reset();
            m_server.release();
        });
        EXPECT_EQ(account().oauthStatus, row.status) << row.path;
    }
}

} // namespace
} // namespace burnwick
