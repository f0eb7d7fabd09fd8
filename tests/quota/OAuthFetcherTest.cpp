// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthFetcher.h"

#include "net/HttpClient.h"
#include "net/TransportError.h"
#include "quota/FetchError.h"
#include "quota/KeychainManager.h"
#include "support/LogCapture.h"
#include "support/ManualClock.h"
#include "support/MemorySecretStore.h"
#include "support/Outcome.h"
#include "support/ScriptedServer.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QJsonDocument>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::errorOf;
using test::held;
using test::outcomeOf;
using test::resultOf;
using test::ScriptedAnswer;
using test::ScriptedServer;
using Ending = ScriptedAnswer::Ending;
using Kind = FetchError::Kind;

const QByteArray usageTarget = "/api/oauth/usage";
const QByteArray tokenTarget = "/api/oauth/token";

const ScriptedAnswer usage{200, R"({"five_hour":{"utilization":62,"resets_at":"2025-06-10T15:00:00.5+00:00"},
    "seven_day":{"utilization":7},
    "extra_usage":{"is_enabled":true,"monthly_limit":5000,"used_credits":1000,"utilization":20}})"};
const ScriptedAnswer newTokens{
    200, R"({"access_token":"secret-a2","refresh_token":"secret-r2","expires_in":3600})"};
const ScriptedAnswer refused{400, R"({"error":"invalid_grant"})"};

/// A fetcher with a local server and a login in memory. No token may appear in an error or the log.
class OAuthFetcherTest : public testing::Test {
protected:
    ~OAuthFetcherTest() override { EXPECT_EQ(m_log.lines().filter(QStringLiteral("secret")), QStringList()); }

    void SetUp() override {
        makeFetcher(m_server);
        logIn("2025-06-10T20:00:00Z");
        m_server.script(usageTarget, {usage});
        m_server.script(tokenTarget, {newTokens});
    }

    void makeFetcher(const ScriptedServer &server, std::chrono::milliseconds deadline = 10s) {
        m_fetcher.reset(); // refers to the client
        m_http = std::make_unique<HttpClient>(HttpLimits{deadline});
        m_fetcher = std::make_unique<OAuthFetcher>(*m_http, server.url(QString::fromUtf8(usageTarget)),
                                                   server.url(QString::fromUtf8(tokenTarget)), m_keychain,
                                                   m_clock, Calendar::inZone("UTC"));
    }

    void logIn(std::string_view expiresAt, bool withRefreshToken = true) {
        m_store.blob = R"({"claudeAiOauth":{"accessToken":"secret-a1",)" +
                       std::string(withRefreshToken ? R"("refreshToken":"secret-r1",)" : "") +
                       R"("expiresAt":")" + std::string(expiresAt) + R"("}})";
    }

    /// The access tokens that the usage endpoint received.
    [[nodiscard]] std::vector<std::string> tokensSent() const {
        std::vector<std::string> tokens;
        for (const auto &request : m_server.requestsFor(usageTarget))
            tokens.push_back(request.header("Authorization").toStdString());
        return tokens;
    }
    [[nodiscard]] std::size_t refreshes() const { return m_server.requestsFor(tokenTarget).size(); }

    FetchError failure() {
        const auto error = errorOf<FetchError>(m_fetcher->fetchUsage());
        qInfo("%s", error.what());
        return error;
    }

    const std::string m_old = "Bearer secret-a1";
    const std::string m_new = "Bearer secret-a2";
    test::LogCapture m_log;
    test::ManualClock m_clock{"2025-06-10T12:00:00Z"};
    ScriptedServer m_server;
    test::MemorySecretStore m_store;
    KeychainManager m_keychain{m_store};
    std::unique_ptr<HttpClient> m_http;
    std::unique_ptr<OAuthFetcher> m_fetcher;
};

TEST_F(OAuthFetcherTest, ARejectedTokenIsRenewedStoredAndReplaced) {
    m_server.script(usageTarget, {{401}, usage});
    const auto [quota, extraUsage, limits] = resultOf(m_fetcher->fetchUsage());
    EXPECT_EQ(quota, (QuotaData{62, 7, 0, test::at("2025-06-10T15:00:00.5Z"), {}, {}}));
    EXPECT_EQ(extraUsage, (ExtraUsageData{10, 50, 40, 20, 20}));
    EXPECT_EQ(tokensSent(), (std::vector{m_old, m_new}));
    EXPECT_EQ(resultOf(m_keychain.readCredentials()),
              (OAuthCredentials{"secret-a2", "secret-r2", test::at("2025-06-10T13:00:00Z")}));

    const auto &requests = m_server.requests();
    ASSERT_EQ(requests.size(), 3);
    for (const auto &request : requests)
        EXPECT_EQ(request.header("anthropic-beta"), "oauth-2025-04-20");
    EXPECT_EQ(requests[0].method, "GET");
    EXPECT_TRUE(requests[0].body.isEmpty());
    EXPECT_TRUE(requests[0].header("Content-Type").isNull());
    EXPECT_EQ(requests[1].method, "POST");
    EXPECT_EQ(requests[1].header("Content-Type"), "application/json");
    EXPECT_TRUE(requests[1].header("Authorization").isNull());
    EXPECT_EQ(QJsonDocument::fromJson(requests[1].body),
              QJsonDocument::fromJson(R"({"grant_type":"refresh_token","refresh_token":"secret-r1"})"));
}

TEST_F(OAuthFetcherTest, ATokenThatExpiresWithinFiveMinutesIsRenewedFirst) {
    const struct {
        const char *expiresAt;
        bool withRefreshToken;
        std::string sent;
    } rows[] = {
        {"2025-06-10T12:05:00Z", true, m_new},
        {"2025-06-10T12:05:01Z", true, m_old},
        {"2025-06-10T11:00:00Z", false, m_old},
        {"unknown", true, m_old},
    };
    for (const auto &row : rows) {
        logIn(row.expiresAt, row.withRefreshToken);
        resultOf(m_fetcher->fetchUsage());
        EXPECT_EQ(tokensSent().back(), row.sent) << row.expiresAt;
    }
    EXPECT_EQ(tokensSent().size(), std::size(rows)) << "the old token was sent first";
    EXPECT_EQ(m_store.replacements, 1);
}

TEST_F(OAuthFetcherTest, FailuresOfTheUsageEndpoint) {
    const struct {
        std::vector<int> statuses; ///< before one that would be a success
        Kind kind;
        int httpStatus;
    } rows[] = {
        {{401, 401}, Kind::unauthorized, 0}, {{401, 403}, Kind::httpError, 403},
        {{201}, Kind::httpError, 201},       {{429}, Kind::httpError, 429},
        {{500}, Kind::httpError, 500},
    };
    for (const auto &row : rows) {
        std::vector<ScriptedAnswer> answers;
        for (const int status : row.statuses)
            answers.push_back({status, usage.body, {{"retry-after", "1600"}}});
        answers.push_back(usage);
        m_server.script(usageTarget, answers);
        const auto before = tokensSent().size();
        const auto error = failure();
        EXPECT_EQ(error.kind(), row.kind);
        EXPECT_EQ(error.httpStatus(), row.httpStatus);
        EXPECT_EQ(error.retryAfter(), row.httpStatus == 429 ? std::optional(1600s) : std::nullopt);
        EXPECT_EQ(tokensSent().size() - before, row.statuses.size());
    }
    EXPECT_EQ(refreshes(), 2);
}

TEST_F(OAuthFetcherTest, FailuresOfTheTokenEndpoint) {
    const std::pair<ScriptedAnswer, Kind> rows[] = {
        {refused, Kind::refreshTokenExpired},
        {{401}, Kind::refreshTokenExpired},
        {{500}, Kind::refreshTemporaryFailure},
        {{200, "[]"}, Kind::refreshFailed},
        {{200, "<html>"}, Kind::refreshFailed},
        {{200, R"({"access_token":5})"}, Kind::refreshFailed},
        {{200, R"({"access_token":""})"}, Kind::refreshFailed},
        {{200, newTokens.body, {}, Ending::cut}, Kind::refreshFailed},
        {{200, {}, {}, Ending::silence}, Kind::refreshFailed},
    };
    m_server.script(usageTarget, {{401}});
    for (const auto &[answer, kind] : rows) {
        makeFetcher(m_server, answer.ending == Ending::silence ? 1s : 10s);
        m_server.script(tokenTarget, {answer});
        const auto requests = m_server.requests().size();
        EXPECT_EQ(failure().kind(), kind)
            << answer.status << ' ' << answer.body.data() << static_cast<int>(answer.ending);
        EXPECT_EQ(m_server.requests().size(), requests + 2);
    }
    EXPECT_EQ(m_store.replacements, 0);
}

TEST_F(OAuthFetcherTest, ANewTokenIsUsedEvenWhenItCannotBeStored) {
    m_store.writable = false;
    m_server.script(usageTarget, {{401}, usage});
    EXPECT_EQ(resultOf(m_fetcher->fetchUsage()).quota.fiveHourUsagePct, 62);
}

TEST_F(OAuthFetcherTest, OverlappingFetchesShareOneRenewal) {
    logIn("2025-06-10T11:00:00Z");
    m_server.script(tokenTarget, {held(newTokens), refused});
    const auto first = outcomeOf(m_fetcher->fetchUsage());
    const auto second = outcomeOf(m_fetcher->fetchUsage());
    ASSERT_TRUE(waitFor([this] { return refreshes() > 0; }));
    const auto third = outcomeOf(m_fetcher->fetchUsage());
    m_server.release();
    ASSERT_TRUE(waitFor([&] { return first->done() && second->done() && third->done(); }));
    EXPECT_TRUE(first->value && second->value && third->value);
    EXPECT_EQ(refreshes(), 1);
    EXPECT_EQ(m_store.replacements, 1);
    EXPECT_EQ(tokensSent(), (std::vector{m_new, m_new, m_new}));
}

TEST_F(OAuthFetcherTest, ARejectionAfterARenewalUsesTheNewToken) {
    m_server.script(usageTarget, {{401}, held({401}), usage});
    m_server.script(tokenTarget, {newTokens, refused});
    const auto first = outcomeOf(m_fetcher->fetchUsage());
    const auto second = outcomeOf(m_fetcher->fetchUsage());
    ASSERT_TRUE(waitFor([&] { return first->done() || second->done(); }));
    m_server.release();
    ASSERT_TRUE(waitFor([&] { return first->done() && second->done(); }));
    EXPECT_TRUE(first->value && second->value);
    EXPECT_EQ(refreshes(), 1);
}

TEST_F(OAuthFetcherTest, ALoginStoredDuringARenewalWins) {
    const std::string fresh = R"({"accessToken":"secret-b1","refreshToken":"secret-q1"})";
    const std::string sentFresh = "Bearer secret-b1";
    const struct {
        const char *what;
        ScriptedAnswer first;
        std::string meanwhile;
        std::vector<std::string> sent; ///< empty: the renewal fails
        std::size_t refreshes;
    } rows[] = {
        {"refused", refused, fresh, {sentFresh}, 1},
        {"refused; the other is about to expire",
         refused,
         R"({"accessToken":"secret-b1","refreshToken":"secret-q1","expiresAt":0})",
         {m_new},
         2},
        {"refused; the other cannot be renewed", refused, R"({"accessToken":"secret-a1"})", {}, 1},
        {"refused, and logged out", refused, "{}", {}, 1},
        {"granted", newTokens, fresh, {sentFresh}, 1},
        {"granted, and logged out", newTokens, "{}", {m_new}, 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        logIn("2025-06-10T11:00:00Z");
        const auto asked = static_cast<std::ptrdiff_t>(tokensSent().size());
        const auto exchanged = refreshes();
        m_server.script(tokenTarget, {row.first, newTokens});
        const auto outcome = outcomeOf(m_fetcher->fetchUsage());
        // The refresh token was sent; only the event loop reads the response.
        const std::string login = R"({"claudeAiOauth":)" + row.meanwhile + "}";
        m_store.blob = login;
        ASSERT_TRUE(waitFor([&] { return outcome->done(); }));
        EXPECT_EQ(refreshes() - exchanged, row.refreshes);
        EXPECT_EQ(outcome->value.has_value(), !row.sent.empty());
        const auto sent = tokensSent();
        EXPECT_EQ(std::vector(sent.begin() + asked, sent.end()), row.sent);
        if (row.refreshes == 1) {
            EXPECT_EQ(m_store.blob, login) << "a mixture of both logins";
        }
    }
}

TEST_F(OAuthFetcherTest, DestructionDuringAFetchCancelsIt) {
    const struct {
        const char *suspension;
        bool readHeld;
        std::vector<ScriptedAnswer> usageAnswers;
        std::size_t requests; ///< received by the server by then
    } rows[] = {
        {"reading the login", true, {usage}, 0},
        {"requesting the usage", false, {held(usage)}, 1},
        {"renewing", false, {{401}}, 2},
        {"requesting the usage again", false, {{401}, held(usage)}, 3},
    };
    for (const bool clientDestroyed : {false, true}) {
        for (const auto &row : rows) {
            SCOPED_TRACE(row.suspension);
            ScriptedServer server;
            server.script(usageTarget, row.usageAnswers);
            server.script(tokenTarget, {row.requests == 2 ? held(newTokens) : newTokens});
            makeFetcher(server);
            logIn("2025-06-10T20:00:00Z");
            m_store.holdsReads = row.readHeld;
            const auto outcome = outcomeOf(m_fetcher->fetchUsage());
            ASSERT_TRUE(waitFor([&] { return server.requests().size() == row.requests; }));
            m_fetcher.reset();
            if (clientDestroyed)
                m_http.reset();
            server.release();
            m_store.answerReads();
            ASSERT_TRUE(waitFor([&outcome] { return outcome->error != nullptr; }));
            EXPECT_EQ(test::caught<TransportError>(outcome->error).kind(), TransportError::Kind::cancelled);
            EXPECT_EQ(server.requests().size(), row.requests) << "it continued";
        }
    }
}

} // namespace
} // namespace burnwick
