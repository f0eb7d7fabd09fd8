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
#include "json/DecodeError.h"

#include <gtest/gtest.h>

#include <QJsonDocument>
#include <QJsonObject>

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
constexpr auto start = "2025-06-10T12:00:00Z";

const ScriptedAnswer usage{200, R"({"five_hour":{"utilization":62,"resets_at":"2025-06-10T15:00:00.5+00:00"},
    "seven_day":{"utilization":7},
    "extra_usage":{"is_enabled":true,"monthly_limit":5000,"used_credits":1000,"utilization":20}})"};
const ScriptedAnswer newTokens{
    200, R"({"access_token":"secret-a2","refresh_token":"secret-r2","expires_in":3600})"};
const ScriptedAnswer refused{400, R"({"error":"invalid_grant"})"};

/// A fetcher with a local server and a login in memory. No token may appear in an error or the log.
class OAuthFetcherTest : public testing::Test {
protected:
    ~OAuthFetcherTest() override {
        for (const QString &line : m_log.lines())
            expectNoSecret(line.toStdString());
    }

    void SetUp() override {
        makeFetcher();
        logIn("2025-06-10T20:00:00Z");
        m_server.script(usageTarget, {usage});
        m_server.script(tokenTarget, {newTokens});
    }

    void makeFetcher(std::chrono::milliseconds deadline = 10s) {
        m_fetcher.reset();
        m_http = std::make_unique<HttpClient>(HttpLimits{deadline});
        m_fetcher = std::make_unique<OAuthFetcher>(*m_http, m_server.url(QString::fromUtf8(usageTarget)),
                                                   m_server.url(QString::fromUtf8(tokenTarget)), m_keychain,
                                                   m_clock, Calendar::inZone("UTC"));
    }

    void logIn(std::string_view expiresAt, bool withRefreshToken = true) {
        m_store.blob = R"({"claudeAiOauth":{"accessToken":"secret-a1",)" +
                       std::string(withRefreshToken ? R"("refreshToken":"secret-r1",)" : "") +
                       R"("expiresAt":")" + std::string(expiresAt) + R"(","scopes":["x"]},"other":1})";
    }

    [[nodiscard]] OAuthCredentials stored() { return *resultOf(m_keychain.readCredentials()); }

    /// The access tokens that the usage endpoint received.
    [[nodiscard]] std::vector<std::string> tokensSent() const {
        std::vector<std::string> tokens;
        for (const auto &request : m_server.requestsFor(usageTarget))
            tokens.push_back(request.header("Authorization").toStdString());
        return tokens;
    }
    [[nodiscard]] std::size_t refreshes() const { return m_server.requestsFor(tokenTarget).size(); }

    template <typename Error = FetchError>
    Error failure() {
        const auto error = errorOf<Error>(m_fetcher->fetchUsage());
        expectNoSecret(error.what());
        return error;
    }

    static void expectNoSecret(const std::string &text) {
        EXPECT_EQ(text.find("secret"), std::string::npos) << text;
    }

    const std::string m_old = "Bearer secret-a1";
    const std::string m_new = "Bearer secret-a2";
    test::LogCapture m_log;
    test::ManualClock m_clock{start};
    ScriptedServer m_server;
    test::MemorySecretStore m_store;
    KeychainManager m_keychain{m_store};
    std::unique_ptr<HttpClient> m_http;
    std::unique_ptr<OAuthFetcher> m_fetcher;
};

TEST_F(OAuthFetcherTest, SendsTheStoredToken) {
    const auto [quota, extraUsage] = resultOf(m_fetcher->fetchUsage());
    EXPECT_EQ(quota, (QuotaData{62, 7, 0, test::at("2025-06-10T15:00:00.5Z"), {}, {}}));
    EXPECT_EQ(extraUsage, (ExtraUsageData{10, 50, 40, 20, 20}));

    ASSERT_EQ(m_server.requests().size(), 1);
    const auto &request = m_server.requests().front();
    EXPECT_EQ(request.method, "GET");
    EXPECT_EQ(request.target, usageTarget);
    EXPECT_EQ(request.header("Authorization"), "Bearer secret-a1");
    EXPECT_EQ(request.header("anthropic-beta"), "oauth-2025-04-20");
    EXPECT_TRUE(request.body.isEmpty());
    EXPECT_TRUE(request.header("Content-Type").isNull());
    EXPECT_EQ(m_store.replacements, 0);
}

TEST_F(OAuthFetcherTest, ARejectedTokenIsRenewedAndStored) {
    m_server.script(usageTarget, {{401}, usage});
    EXPECT_EQ(resultOf(m_fetcher->fetchUsage()).first.fiveHourUsagePct, 62);
    EXPECT_EQ(tokensSent(), (std::vector{m_old, m_new}));
    EXPECT_EQ(stored(), (OAuthCredentials{"secret-a2", "secret-r2", test::at("2025-06-10T13:00:00Z")}));
    const auto document = QJsonDocument::fromJson(QByteArray::fromStdString(*m_store.blob)).object();
    EXPECT_EQ(document.value(QStringLiteral("other")), 1);

    ASSERT_EQ(refreshes(), 1);
    const auto request = m_server.requestsFor(tokenTarget).front();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.header("Content-Type"), "application/json");
    EXPECT_EQ(request.header("anthropic-beta"), "oauth-2025-04-20");
    EXPECT_TRUE(request.header("Authorization").isNull());
    EXPECT_EQ(QJsonDocument::fromJson(request.body).object(),
              (QJsonObject{{QStringLiteral("grant_type"), QStringLiteral("refresh_token")},
                           {QStringLiteral("refresh_token"), QStringLiteral("secret-r1")}}));
}

TEST_F(OAuthFetcherTest, ThereIsNoThirdAttempt) {
    const struct {
        ScriptedAnswer second;
        Kind kind;
    } rows[] = {{{401}, Kind::unauthorized}, {{403}, Kind::httpError}};
    for (const auto &row : rows) {
        const auto before = m_server.requests().size();
        m_server.script(usageTarget, {{401}, row.second, usage});
        EXPECT_EQ(failure().kind(), row.kind);
        EXPECT_EQ(m_server.requests().size() - before, 3);
    }
    EXPECT_EQ(refreshes(), 2);
}

TEST_F(OAuthFetcherTest, ATokenThatExpiresWithinFiveMinutesIsRenewedFirst) {
    const struct {
        const char *expiresAt;
        bool withRefreshToken;
        std::string sent;
    } rows[] = {
        {"2025-06-10T12:04:00Z", true, m_new},  {"2025-06-10T12:05:00Z", true, m_new},
        {"2025-06-10T12:06:00Z", true, m_old},  {"2025-06-10T11:00:00Z", true, m_new},
        {"2025-06-10T11:00:00Z", false, m_old}, {"unknown", true, m_old},
    };
    for (const auto &row : rows) {
        logIn(row.expiresAt, row.withRefreshToken);
        resultOf(m_fetcher->fetchUsage());
        EXPECT_EQ(tokensSent().back(), row.sent) << row.expiresAt;
    }
    EXPECT_EQ(tokensSent().size(), std::size(rows)) << "the old token was sent first";
}

TEST_F(OAuthFetcherTest, WithoutALoginNothingIsAsked) {
    m_store.blob = "{}";
    EXPECT_EQ(failure().kind(), Kind::noToken);
    m_store.blob.reset();
    EXPECT_EQ(failure().kind(), Kind::noToken);
    EXPECT_EQ(m_server.connectionCount(), 0);
}

TEST_F(OAuthFetcherTest, FailuresOfTheUsageEndpoint) {
    for (const int status : {201, 302, 403, 500}) {
        m_server.script(usageTarget, {{status, usage.body}});
        const auto error = failure();
        EXPECT_EQ(error.kind(), Kind::httpError);
        EXPECT_EQ(error.httpStatus(), status);
    }
    m_server.script(usageTarget, {{200, R"({"five_hour":{"utilization":62}})"}});
    EXPECT_NO_THROW(failure<DecodeError>());
    // An incomplete 401 does not renew the login.
    m_server.script(usageTarget, {{401, "rejected", {}, Ending::cut}});
    EXPECT_EQ(failure<TransportError>().kind(), TransportError::Kind::incomplete);
    EXPECT_EQ(refreshes(), 0);

    makeFetcher(50ms);
    m_server.script(usageTarget, {{200, "{", {}, Ending::silence}});
    EXPECT_EQ(failure<TransportError>().kind(), TransportError::Kind::timedOut);
}

TEST_F(OAuthFetcherTest, FailuresOfTheTokenEndpoint) {
    const struct {
        ScriptedAnswer answer;
        Kind kind;
    } rows[] = {
        {refused, Kind::refreshTokenExpired},
        {{401}, Kind::refreshTokenExpired},
        {{302}, Kind::refreshTemporaryFailure},
        {{500}, Kind::refreshTemporaryFailure},
        {{200, "[]"}, Kind::refreshFailed},
        {{200, "<html>"}, Kind::refreshFailed},
        {{200, newTokens.body, {}, Ending::cut}, Kind::refreshFailed},
        {{200, {}, {}, Ending::silence}, Kind::refreshFailed},
    };
    const auto before = m_store.blob;
    m_server.script(usageTarget, {{401}});
    for (const auto &row : rows) {
        makeFetcher(row.answer.ending == Ending::silence ? 1s : 10s);
        m_server.script(tokenTarget, {row.answer});
        const auto attempts = tokensSent().size();
        const auto refreshesBefore = refreshes();
        EXPECT_EQ(failure().kind(), row.kind)
            << row.answer.status << ' ' << row.answer.body.data() << static_cast<int>(row.answer.ending);
        EXPECT_EQ(tokensSent().size(), attempts + 1);
        EXPECT_EQ(refreshes(), refreshesBefore + 1);
    }
    EXPECT_EQ(m_store.blob, before);
}

TEST_F(OAuthFetcherTest, ANewTokenIsUsedEvenWhenItCannotBeStored) {
    m_store.writable = false;
    m_server.script(usageTarget, {{401}, usage});
    EXPECT_EQ(resultOf(m_fetcher->fetchUsage()).first.fiveHourUsagePct, 62);
    EXPECT_EQ(stored().accessToken, "secret-a1");
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
        std::optional<std::string> sent; ///< absent: the renewal fails
        std::size_t refreshes;
    } rows[] = {
        {"refused", refused, fresh, sentFresh, 1},
        {"refused; the other is about to expire", refused,
         R"({"accessToken":"secret-b1","refreshToken":"secret-q1","expiresAt":0})", m_new, 2},
        {"refused; the other cannot be renewed", refused, R"({"accessToken":"secret-a1"})", {}, 1},
        {"refused, and logged out", refused, "{}", {}, 1},
        {"granted", newTokens, fresh, sentFresh, 1},
        {"granted, and logged out", newTokens, "{}", m_new, 1},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        logIn("2025-06-10T11:00:00Z");
        const auto asked = tokensSent().size();
        const auto exchanged = refreshes();
        m_server.script(tokenTarget, {row.first, newTokens});
        const auto outcome = outcomeOf(m_fetcher->fetchUsage());
        // The refresh token was sent; only the event loop reads the response.
        const std::string login = R"({"claudeAiOauth":)" + row.meanwhile + "}";
        m_store.blob = login;
        ASSERT_TRUE(waitFor([&] { return outcome->done(); }));
        EXPECT_EQ(refreshes() - exchanged, row.refreshes);
        ASSERT_EQ(outcome->value.has_value(), row.sent.has_value());
        if (row.sent) {
            ASSERT_EQ(tokensSent().size() - asked, 1);
            EXPECT_EQ(tokensSent().back(), *row.sent);
        }
        if (row.refreshes == 1) {
            EXPECT_EQ(m_store.blob, login) << "a mixture of both logins";
        }
    }
}

/// The suspension of a fetch at which the fetcher is destroyed.
struct Suspension {
    const char *name;
    bool readHeld;
    std::vector<ScriptedAnswer> usageAnswers;
    std::size_t requests; ///< received by the server by then
};

TEST_F(OAuthFetcherTest, DestructionDuringAFetchCancelsIt) {
    const Suspension rows[] = {
        {"reading the login", true, {usage}, 0},
        {"requesting the usage", false, {held(usage)}, 1},
        {"renewing", false, {{401}}, 2},
        {"requesting it again", false, {{401}, held(usage)}, 3},
    };
    for (const bool clientDestroyedFirst : {false, true}) {
        for (const auto &row : rows) {
            ScriptedServer server;
            server.script(usageTarget, row.usageAnswers);
            server.script(tokenTarget, {row.requests == 2 ? held(newTokens) : newTokens});
            m_store.holdsReads = row.readHeld;
            auto http = std::make_unique<HttpClient>();
            auto fetcher = std::make_unique<OAuthFetcher>(*http, server.url(QString::fromUtf8(usageTarget)),
                                                          server.url(QString::fromUtf8(tokenTarget)),
                                                          m_keychain, m_clock, Calendar::inZone("UTC"));
            const auto outcome = outcomeOf(fetcher->fetchUsage());
            ASSERT_TRUE(waitFor([&] { return server.requests().size() == row.requests; })) << row.name;
            ASSERT_FALSE(outcome->done()) << row.name;
            fetcher.reset();
            if (clientDestroyedFirst)
                http.reset();
            server.release();
            m_store.answerReads();
            ASSERT_TRUE(waitFor([&outcome] { return outcome->done(); })) << row.name;
            ASSERT_TRUE(outcome->error) << row.name;
            EXPECT_THROW(std::rethrow_exception(outcome->error), TransportError) << row.name;
            EXPECT_EQ(server.requests().size(), row.requests) << row.name << ": it continued";
            logIn("2025-06-10T20:00:00Z");
        }
    }
}

} // namespace
} // namespace burnwick
