// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/HttpClient.h"

#include "model/Version.h"
#include "net/TransportError.h"
#include "support/EnvironmentVariable.h"
#include "support/Outcome.h"
#include "support/ScriptedServer.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <QSslConfiguration>
#include <QTcpServer>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::errorOf;
using test::outcomeOf;
using test::resultOf;
using test::ScriptedAnswer;
using test::ScriptedServer;
using Ending = ScriptedAnswer::Ending;
using Kind = TransportError::Kind;

const QString page = QStringLiteral("/page");
const ScriptedAnswer answer{200, "answer"};
/// In a network reserved for documentation.
const QUrl elsewhere(QStringLiteral("http://192.0.2.1/page"));

HttpRequest get(const QUrl &url) {
    return {HttpMethod::get, url, {{"Authorization", "Bearer secret-token"}}, {}};
}

class HttpClientTest : public testing::Test {
protected:
    void script(std::vector<ScriptedAnswer> answers) { m_server.script("/page", std::move(answers)); }
    [[nodiscard]] HttpRequest request() const { return get(m_server.url(page)); }
    HttpResponse response() { return resultOf(m_client.send(request())); }

    ScriptedServer m_server;
    HttpClient m_client;
    HttpClient m_impatient{{50ms}}; ///< for servers that never complete a response
};

TEST_F(HttpClientTest, KeepsNoCookiesAndNoCacheBetweenRequests) {
    script({{200, "a", {{"Set-Cookie", "a=b"}, {"Cache-Control", "max-age=3600"}}}});
    response();
    response();
    ASSERT_EQ(m_server.requests().size(), 2) << "answered from a cache";
    EXPECT_EQ(m_server.requests().back().header("User-Agent").toStdString(),
              "Burnwick/" + std::string(version()));
    for (const char *header : {"Cookie", "Cache-Control", "Pragma", "If-None-Match", "If-Modified-Since"})
        EXPECT_TRUE(m_server.requests().back().header(header).isNull()) << header;
}

TEST_F(HttpClientTest, ReturnsResponsesOfEveryStatusAndFollowsNoRedirect) {
    for (const int status : {204, 302, 303, 304, 307, 401, 407, 500}) {
        const QByteArray body = status < 400 ? "" : "text";
        script({{status, body, {{"WWW-Authenticate", "Basic realm=x"}, {"Location", "/elsewhere"}}}});
        for (const auto method : {HttpMethod::get, HttpMethod::post}) {
            HttpRequest toSend = request();
            toSend.method = method;
            const auto before = m_server.requests().size();
            const auto received = resultOf(m_client.send(toSend));
            EXPECT_EQ(received.status, status);
            EXPECT_EQ(received.body, body) << status;
            EXPECT_EQ(received.header("LOCATION"), "/elsewhere") << status;
            EXPECT_TRUE(received.header("Retry-After").isNull());
            EXPECT_EQ(m_server.requests().size(), before + 1) << status;
        }
    }
    // Also with a broken body.
    HttpClient hurried{{1s}}; // enough for the status on a busy machine
    for (const auto ending : {Ending::cut, Ending::trickle, Ending::endless}) {
        script({{403, "a body of some length", {}, ending}});
        HttpClient &client = ending == Ending::trickle ? hurried : m_client;
        EXPECT_EQ(resultOf(client.send(request())).status, 403) << static_cast<int>(ending);
    }
}

TEST_F(HttpClientTest, EachFaultHasItsKind) {
    const std::pair<ScriptedAnswer, Kind> rows[] = {
        {{200, "a body of some length", {}, Ending::cut}, Kind::incomplete},
        {{401, "a body of some length", {}, Ending::cut}, Kind::incomplete},
        {{200, {}, {}, Ending::hangUp}, Kind::incomplete},
        {{200, "SSH-2.0-OpenSSH_9.2\r\n", {}, Ending::raw}, Kind::incomplete},
        {{200, {}, {}, Ending::silence}, Kind::timedOut},
        {{200, "x", {}, Ending::trickle}, Kind::timedOut},
    };
    for (const auto &[faulty, kind] : rows) {
        script({faulty});
        HttpClient &client = kind == Kind::timedOut ? m_impatient : m_client;
        const auto error = errorOf<TransportError>(client.send(request()));
        EXPECT_EQ(error.kind(), kind) << faulty.status << ' ' << static_cast<int>(faulty.ending);
        EXPECT_EQ(std::string(error.what()).find("127.0.0.1"), std::string::npos) << error.what();
    }
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
    const QUrl closedPort(QStringLiteral("http://127.0.0.1:%1/").arg(closed.serverPort()));
    closed.close();
    EXPECT_EQ(errorOf<TransportError>(m_client.send(get(closedPort))).kind(), Kind::unreachable);
    const QUrl text(QStringLiteral("data:,text"));
    EXPECT_EQ(errorOf<TransportError>(m_client.send(get(text))).kind(), Kind::notHttp);
}

TEST_F(HttpClientTest, AHeaderWithALineBreakIsRejected) {
    HttpRequest twoLines = request();
    twoLines.headers = {{"Authorization", "Bearer a\r\nX-Evil: 1"}};
    EXPECT_EQ(errorOf<TransportError>(m_client.send(twoLines)).kind(), Kind::invalidRequest);
    EXPECT_EQ(m_server.connectionCount(), 0);
}

TEST_F(HttpClientTest, APostIsSentOnce) {
    const ScriptedAnswer hangUp{.ending = Ending::hangUp};
    const ScriptedAnswer garbage{200, "SSH-2.0-OpenSSH_9.2\r\n", {}, Ending::raw};
    const struct {
        const char *what;
        std::vector<ScriptedAnswer> answers;
    } rows[] = {
        {"fresh connection, no answer", {hangUp}},
        // The library may mistake the end for that of an idle connection.
        {"used connection, no answer", {answer, hangUp}},
        {"used connection, garbage", {answer, garbage}},
        {"fresh connection, half an answer", {{200, "a body of some length", {}, Ending::cut}}},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        ScriptedServer server;
        server.script("/page", row.answers);
        HttpClient client;
        const HttpRequest post{HttpMethod::post, server.url(page), {}, "body"};
        for (std::size_t i = 1; i < row.answers.size(); ++i)
            resultOf(client.send(post));
        EXPECT_EQ(errorOf<TransportError>(client.send(post)).kind(), Kind::incomplete);
        ASSERT_EQ(server.requests().size(), row.answers.size());
        EXPECT_EQ(server.requests().back().body, "body");
    }
}

TEST_F(HttpClientTest, ABodyAboveTheLimitIsTooLarge) {
    const QByteArray large(1 << 20, 'x');
    script({{200, large},
            {200, large + 'x'},
            {200, large, {}, Ending::endless},
            {200, large, {{"Content-Encoding", "gzip"}}, Ending::endless}});
    EXPECT_EQ(response().body, large);
    EXPECT_EQ(m_server.requests().back().header("Accept-Encoding"), "identity");
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(errorOf<TransportError>(m_client.send(request())).kind(), Kind::tooLarge);
}

TEST_F(HttpClientTest, OnlyATrustedCertificateForTheHostIsAccepted) {
    const struct {
        const char *host;
        bool trusted;
        bool answers;
    } rows[] = {{"localhost", true, true}, {"localhost", false, false}, {"127.0.0.1", true, false}};
    const auto before = QSslConfiguration::defaultConfiguration();
    for (const auto &row : rows) {
        ScriptedServer server(ScriptedServer::Transport::encrypted);
        server.script("/page", {answer});
        QUrl url = server.url(page);
        url.setHost(QString::fromLatin1(row.host));
        auto configuration = before;
        configuration.setCaCertificates({row.trusted ? server.certificate() : QSslCertificate()});
        QSslConfiguration::setDefaultConfiguration(configuration);
        HttpClient client;
        auto task = client.send(get(url));
        if (row.answers) {
            EXPECT_EQ(resultOf(std::move(task)).body, "answer");
        } else {
            EXPECT_EQ(errorOf<TransportError>(std::move(task)).kind(), Kind::untrustedServer);
        }
        EXPECT_EQ(server.requests().size(), row.answers ? 1 : 0) << "the token was sent";
    }
    QSslConfiguration::setDefaultConfiguration(before);
}

/// Sets the proxies in the environment for its lifetime.
struct ProxySetting {
    explicit ProxySetting(const QByteArray &proxy)
        : http("http_proxy", proxy)
        , https("https_proxy", proxy) {}
    test::EnvironmentVariable http, https;
};

TEST_F(HttpClientTest, TheSystemsProxyIsUsedExceptForLoopback) {
    script({answer});
    ScriptedServer proxy;
    proxy.script(elsewhere.toEncoded(), {{200, "first"}, {200, "second"}});
    const ProxySetting setting(proxy.url().toEncoded());
    EXPECT_EQ(response().body, "answer");
    EXPECT_EQ(proxy.connectionCount(), 0);
    EXPECT_EQ(resultOf(m_client.send(get(elsewhere))).body, "first");
    EXPECT_EQ(resultOf(m_client.send(get(elsewhere))).body, "second");
}

TEST_F(HttpClientTest, ASlowProxyScriptBlocksNothing) {
    QTcpServer silence; // the server of the script
    ASSERT_TRUE(silence.listen(QHostAddress::LocalHost));
    const ProxySetting setting("pac+http://127.0.0.1:" + QByteArray::number(silence.serverPort()) + "/p.pac");
    EXPECT_EQ(errorOf<TransportError>(m_impatient.send(get(elsewhere))).kind(), Kind::timedOut);
    EXPECT_TRUE(waitFor([&silence] { return silence.hasPendingConnections(); }))
        << "the script was not requested";

    auto destroyed = std::make_unique<HttpClient>();
    const auto outcome = outcomeOf(destroyed->send(get(elsewhere)));
    EXPECT_FALSE(outcome->done());
    destroyed.reset();
    ASSERT_TRUE(outcome->error);
    EXPECT_THROW(std::rethrow_exception(outcome->error), TransportError);
}

} // namespace
} // namespace burnwick
