// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "async/DetachedTask.h"
#include "support/StateFixture.h"

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::ScriptedAnswer;
using test::statusPath;
using test::usageAnswer;
using test::usagePath;

const ScriptedAnswer refusal{429, "{}"};

class AccountPacingTest : public test::StateFixture {
protected:
    AccountPacingTest() {
        m_store.blob = R"({"claudeAiOauth":{"accessToken":"old"}})";
        m_server.script(statusPath,
                        {{200, R"({"components":[{"id":"k8w3r06qmzrp","name":"","status":""}]})"}});
        QObject::connect(&m_tracker, &AccountTracker::refreshed, [this] { m_ended = requests(); });
    }

    [[nodiscard]] std::size_t requests() const { return m_server.requestsFor(usagePath).size(); }
    /// Whether a request has begun since the last call: it begins with reading the login.
    bool hasBegun() { return std::exchange(m_reads, m_store.reads) != m_store.reads; }
    void start() {
        m_server.script(usagePath, {usageAnswer(50)});
        m_clock.advance(1s);
        m_tracker.start();
        ASSERT_TRUE(waitFor(
            [this] { return figures().quotaReadAt == m_clock.now() && figures().claudeStatusReadAt; }));
        hasBegun();
    }
    /// Advances the clock and the timers, and completes the request that they begin.
    void advance(std::chrono::seconds by) {
        const auto before = requests();
        m_clock.advance(by);
        m_scheduler.advance(by);
        if (!hasBegun())
            return;
        m_asked.push_back(m_clock.now());
        ASSERT_TRUE(waitFor([&] { return m_ended > before; }));
        ASSERT_EQ(m_ended, before + 1);
    }
    /// Makes a request for the user.
    void press(bool forced = false) {
        bool done = false;
        (forced ? m_tracker.forceRefreshQuota() : m_tracker.refreshQuotaNow()).then([&done] { done = true; });
        ASSERT_TRUE(waitFor([&done] { return done; }));
        hasBegun();
    }
    /// Makes the user's request wait after a refusal, the first of the answers.
    void startPostponed(const std::vector<ScriptedAnswer> &answers) {
        start();
        m_server.script(usagePath, answers);
        press();
        press();
        ASSERT_NE(figures().asksAgainAt, std::nullopt);
    }
    void observe(double percent, std::chrono::seconds age = 0s) {
        m_tracker.observe({{Limit::Kind::session, "", percent, m_clock.now() + 1h, m_clock.now() - age,
                            Limit::Source::statusLine}});
    }
    [[nodiscard]] const AccountFigures &figures() const { return m_tracker.figures(); }

    AccountTracker m_tracker{services().account};
    std::size_t m_ended = 0; ///< the number of requests with an outcome
    int m_reads = 0;
    std::vector<Instant> m_asked; ///< by timers
};

TEST_F(AccountPacingTest, ADayWithRefusalsAndAStatusLineNeedsFewRequests) {
    m_jitter = 0.4;
    start();
    const Instant midnight = m_clock.now();
    for (auto time = 1min; time <= 24h; ++time) {
        m_server.script(usagePath, {time >= 8h && time < 14h ? refusal : usageAnswer(50)});
        advance(1min);
        if (time >= 16h && time < 20h && time % 3min == 0min)
            observe(60);
    }
    const auto askedWithin = [&](std::chrono::hours from, std::chrono::hours until) {
        std::vector<int> minutes;
        for (const Instant instant : m_asked) {
            if (instant - midnight >= from && instant - midnight < until)
                minutes.push_back(static_cast<int>((instant - midnight) / 1min));
        }
        return minutes;
    };
    EXPECT_EQ(askedWithin(0h, 8h).size(), 95U);
    EXPECT_EQ(askedWithin(8h, 14h), (std::vector{480, 491, 512, 554, 617, 680, 743, 806}));
    EXPECT_EQ(askedWithin(14h, 16h).size(), 19U) << "every five minutes from 14:29";
    EXPECT_EQ(askedWithin(16h, 20h), (std::vector{989, 1019, 1049, 1079, 1109, 1139, 1169, 1199}));
    EXPECT_EQ(askedWithin(20h, 25h).size(), 48U);
    EXPECT_EQ(requests(), 179U);
}

TEST_F(AccountPacingTest, AfterARefusalTheUsersNextRequestWaitsAsAnnounced) {
    const ScriptedAnswer longRefusal{429, "{}", {{"Retry-After", "1600"}}};
    const struct {
        const char *what;
        bool automatic, forced;
        ScriptedAnswer answer;
        std::chrono::seconds pressed;
        std::optional<std::chrono::seconds> next; ///< null: at once
    } rows[] = {
        {"too early", true, false, refusal, 29s, 10min + 30s},
        {"too early, forced", true, true, refusal, 0s, 10min + 30s},
        {"too early, the service asks for more", true, false, longRefusal, 29s, 1680s},
        {"too early, without automatic requests", false, false, refusal, 29s, 30s},
        {"after half a minute", true, false, longRefusal, 30s, {}},
        {"after half a minute, forced", true, true, refusal, 30s, {}},
    };
    m_jitter = 0.5;
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        m_preferences.setAutoRefreshQuota(true);
        start();
        m_preferences.setAutoRefreshQuota(row.automatic);
        m_server.script(usagePath, {row.answer, usageAnswer(70)});
        press();
        const auto status = figures().oauthStatus;
        const Instant refusedAt = m_clock.now();
        m_tracker.setCalendar(m_calendar);
        EXPECT_FALSE(hasBegun()) << "an automatic request";
        advance(row.pressed);
        EXPECT_EQ(figures().asksAgainAt, std::nullopt);
        const auto before = requests();
        press(row.forced);
        EXPECT_EQ(requests() - before, row.next ? 0 : 1);
        if (row.next) {
            EXPECT_EQ(figures().asksAgainAt, refusedAt + *row.next);
            EXPECT_EQ(figures().oauthStatus, status);
            m_asked.clear();
            while (m_asked.empty() && m_clock.now() < refusedAt + 2h)
                advance(1s);
            EXPECT_EQ(m_asked, std::vector{refusedAt + *row.next});
        }
        EXPECT_EQ(figures().asksAgainAt, std::nullopt);
        EXPECT_EQ(figures().quotaData->fiveHourUsagePct, 70);
    }
}

TEST_F(AccountPacingTest, AnObservationAnswersAPostponedRequest) {
    startPostponed({refusal});
    observe(60);
    EXPECT_EQ(figures().asksAgainAt, std::nullopt);
    EXPECT_EQ(figures().quotaData->fiveHourUsagePct, 60);
}

TEST_F(AccountPacingTest, TheAnnouncedTimeEndsAlsoDuringALogin) {
    startPostponed({refusal});
    m_tracker.connect();
    m_clock.advance(10min);
    m_scheduler.advance(10min);
    EXPECT_EQ(figures().oauthStatus, OAuthStatus::authenticating);
    EXPECT_EQ(figures().asksAgainAt, std::nullopt);
}

TEST_F(AccountPacingTest, ANewLoginEndsThePauseAlsoIfItsFirstRequestFails) {
    startPostponed({refusal, {500, ""}, usageAnswer(70)});
    m_tracker.connect();
    m_terminal.answer(true);
    m_store.blob = R"({"claudeAiOauth":{"accessToken":"new"}})";
    m_scheduler.fire(2s);
    ASSERT_TRUE(waitFor([this] { return m_ended == 3; }));
    EXPECT_EQ(figures().asksAgainAt, std::nullopt);
    hasBegun();
    advance(300s);
    EXPECT_EQ(figures().quotaData->fiveHourUsagePct, 70);
}

TEST_F(AccountPacingTest, AQuotaIsStaleAfterTwoRefreshesUntilTheNextOneOrAnObservation) {
    start();
    m_server.script(usagePath, {refusal});
    advance(599s);
    EXPECT_FALSE(figures().isQuotaStale);
    advance(1s);
    EXPECT_TRUE(figures().isQuotaStale);
    observe(60, 10min);
    EXPECT_EQ(figures().quotaData->fiveHourUsagePct, 60);
    EXPECT_TRUE(figures().isQuotaStale) << "an old observation";
    observe(61, 1s);
    EXPECT_FALSE(figures().isQuotaStale);
    advance(598s);
    EXPECT_FALSE(figures().isQuotaStale);
    advance(1s);
    EXPECT_TRUE(figures().isQuotaStale);
    advance(30s);
    m_server.script(usagePath, {usageAnswer(70)});
    press();
    EXPECT_FALSE(figures().isQuotaStale);
}

} // namespace
} // namespace burnwick
