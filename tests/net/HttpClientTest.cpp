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
using test::redirectTo;
using test::resultOf;
using test::ScriptedAnswer;
using test::ScriptedServer;
using Ending = ScriptedAnswer::Ending;
using Kind = TransportError::Kind;

const QString page = QStringLiteral("/page");
const ScriptedAnswer answer{200, "answer"};

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

TEST_F(HttpClientTest, SendsMethodHeadersAndBody) {
    m_server.script("/page?a=b", {answer});
    QUrl url = m_server.url(page);
    url.setQuery(QStringLiteral("a=b"));
    const auto response = resultOf(
        m_client.send({HttpMethod::post, url, {{"X-One", "1"}, {"Content-Type", "text/plain"}}, "body"}));
    EXPECT_EQ(response.status, 200);
    EXPECT_EQ(response.body, "answer");

    ASSERT_EQ(m_server.requests().size(), 1);
    const auto &request = m_server.requests().front();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.target, "/page?a=b");
    EXPECT_EQ(request.body, "body");
    EXPECT_EQ(request.header("X-One"), "1");
    EXPECT_EQ(request.header("Content-Type"), "text/plain");
    EXPECT_EQ(request.header("User-Agent").toStdString(), "Burnwick/" + std::string(version()));
}

TEST_F(HttpClientTest, KeepsNothingBetweenRequests) {
    script({{200, "a", {{"Set-Cookie", "a=b"}, {"Cache-Control", "max-age=3600"}}}});
    response();
    response();
    ASSERT_EQ(m_server.requests().size(), 2) << "answered from a cache";
    for (const char *header : {"Cookie", "Cache-Control", "Pragma", "If-None-Match", "If-Modified-Since"})
        EXPECT_TRUE(m_server.requests().back().header(header).isNull()) << header;
}

TEST_F(HttpClientTest, ReturnsResponsesOfEveryStatus) {
    for (const int status : {204, 304, 401, 407, 500}) {
        const QByteArray body = status < 400 ? "" : "text";
        script({{status, body, {{"WWW-Authenticate", "Basic realm=x"}}}});
        const auto before = m_server.requests().size();
        const auto received = response();
        EXPECT_EQ(received.status, status);
        EXPECT_EQ(received.body, body) << status;
        EXPECT_EQ(m_server.requests().size(), before + 1) << status;
    }
    // Also with a broken body.
    HttpClient hurried{{1s}}; // enough for the status on a busy machine
    for (const auto ending : {Ending::cut, Ending::trickle, Ending::endless}) {
        script({{403, "some text", {}, ending}});
        HttpClient &client = ending == Ending::trickle ? hurried : m_client;
        EXPECT_EQ(resultOf(client.send(request())).status, 403) << static_cast<int>(ending);
    }
}

TEST_F(HttpClientTest, FollowsNoRedirect) {
    ScriptedServer other;
    for (const int status : {302, 303, 307}) {
        for (const auto method : {HttpMethod::get, HttpMethod::post}) {
            script({redirectTo(other.url(page), status), answer});
            HttpRequest redirected = request();
            redirected.method = method;
            EXPECT_EQ(resultOf(m_client.send(redirected)).status, status);
        }
    }
    EXPECT_EQ(other.connectionCount(), 0);
}

TEST_F(HttpClientTest, TellsFaultsApart) {
    const struct {
        Ending ending;
        QByteArray body;
        Kind kind;
    } rows[] = {
        {Ending::cut, "a body of some length", Kind::incomplete},
        {Ending::hangUp, {}, Kind::incomplete},
        {Ending::raw, "SSH-2.0-OpenSSH_9.2\r\n", Kind::incomplete},
        {Ending::silence, {}, Kind::timedOut},
        {Ending::trickle, "x", Kind::timedOut},
    };
    for (const auto &row : rows) {
        script({{200, row.body, {}, row.ending}});
        HttpClient &client = row.kind == Kind::timedOut ? m_impatient : m_client;
        const auto error = errorOf<TransportError>(client.send(request()));
        EXPECT_EQ(error.kind(), row.kind)
            << "ending " << static_cast<int>(row.ending) << ": " << error.what();
        EXPECT_EQ(std::string(error.what()).find("127.0.0.1"), std::string::npos) << error.what();
    }
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
    const QUrl nobody(QStringLiteral("http://127.0.0.1:%1/").arg(closed.serverPort()));
    closed.close();
    EXPECT_EQ(errorOf<TransportError>(m_client.send(get(nobody))).kind(), Kind::unreachable);
    const QUrl text(QStringLiteral("data:,text"));
    EXPECT_EQ(errorOf<TransportError>(m_client.send(get(text))).kind(), Kind::notHttp);
}

TEST_F(HttpClientTest, AHeaderIsOneLine) {
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

TEST_F(HttpClientTest, BodiesHaveALimit) {
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

TEST_F(HttpClientTest, ServersProveTheirIdentity) {
    const struct {
        ScriptedServer::Transport transport;
        bool trusted;
        bool answers;
    } rows[] = {{ScriptedServer::Transport::encrypted, true, true},
                {ScriptedServer::Transport::encrypted, false, false},
                {ScriptedServer::Transport::encryptedElsewhere, true, false}};
    const auto before = QSslConfiguration::defaultConfiguration();
    for (const auto &row : rows) {
        ScriptedServer server(row.transport);
        server.script("/page", {answer});
        auto configuration = before;
        configuration.setCaCertificates({row.trusted ? server.certificate() : QSslCertificate()});
        QSslConfiguration::setDefaultConfiguration(configuration);
        HttpClient client;
        if (row.answers) {
            EXPECT_EQ(resultOf(client.send(get(server.url(page)))).body, "answer");
        } else {
            EXPECT_EQ(errorOf<TransportError>(client.send(get(server.url(page)))).kind(),
                      Kind::untrustedServer);
            EXPECT_TRUE(server.requests().empty()) << "the token went out";
        }
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

/// In a network reserved for documentation.
const QUrl elsewhere(QStringLiteral("http://192.0.2.1/page"));

TEST_F(HttpClientTest, TheSystemsProxyIsUsedButSeesNothingThatGoesToLoopback) {
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

    script({answer});
    EXPECT_EQ(response().body, "answer") << "loopback needs no proxy";
}

TEST_F(HttpClientTest, DestructionCancelsRunningExchanges) {
    script({{200, {}, {}, Ending::silence}, {200, "x", {}, Ending::trickle}});
    auto client = std::make_unique<HttpClient>();
    const auto first = outcomeOf(client->send(request()));
    const auto second = outcomeOf(client->send(request()));
    ASSERT_TRUE(waitFor([this] { return m_server.requests().size() == 2; }));
    const auto unsent = outcomeOf(client->send(request()));
    client.reset();
    for (const auto &outcome : {first, second, unsent}) {
        ASSERT_TRUE(outcome->error);
        try {
            std::rethrow_exception(outcome->error);
        } catch (const TransportError &error) {
            EXPECT_EQ(error.kind(), Kind::cancelled);
        }
    }
    QCoreApplication::processEvents();
}

} // namespace
} // namespace burnwick
