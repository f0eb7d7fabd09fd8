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
using test::redirectTo;
using test::resultOf;
using test::ScriptedAnswer;
using test::ScriptedServer;
using Ending = ScriptedAnswer::Ending;
using Kind = TransportError::Kind;

const QString page = QStringLiteral("/page");

HttpRequest get(const QUrl &url) {
    return {HttpMethod::get, url, {{"Authorization", "Bearer secret-token"}}, {}};
}

/// For servers that never finish.
constexpr HttpLimits impatient{50ms};

/// Makes all clients trust the certificate while it lives.
class Trusted {
public:
    explicit Trusted(const QSslCertificate &certificate) {
        auto configuration = m_before;
        configuration.setCaCertificates({certificate});
        QSslConfiguration::setDefaultConfiguration(configuration);
    }
    ~Trusted() { QSslConfiguration::setDefaultConfiguration(m_before); }
    Trusted(const Trusted &) = delete;
    Trusted &operator=(const Trusted &) = delete;

private:
    QSslConfiguration m_before = QSslConfiguration::defaultConfiguration();
};

TEST(HttpClientTest, SendsExactlyWhatItIsGiven) {
    ScriptedServer server;
    server.script("/page?a=b", {{200, "answer"}});
    QUrl url = server.url(page);
    url.setQuery(QStringLiteral("a=b"));
    HttpClient client;
    const auto response = resultOf(
        client.send({HttpMethod::post, url, {{"X-One", "1"}, {"Content-Type", "text/plain"}}, "body"}));
    EXPECT_EQ(response.status, 200);
    EXPECT_EQ(response.body, "answer");

    ASSERT_EQ(server.requests().size(), 1);
    const auto &request = server.requests().front();
    EXPECT_EQ(request.method, "POST");
    EXPECT_EQ(request.target, "/page?a=b");
    EXPECT_EQ(request.body, "body");
    EXPECT_EQ(request.header("X-One"), "1");
    EXPECT_EQ(request.header("Content-Type"), "text/plain");
    EXPECT_EQ(request.header("User-Agent").toStdString(), "Burnwick/" + std::string(version()));
}

TEST(HttpClientTest, KeepsNothingBetweenRequests) {
    ScriptedServer server;
    server.script("/page", {{200, "a", {{"Set-Cookie", "a=b"}, {"Cache-Control", "max-age=3600"}}}});
    HttpClient client;
    for (int i = 0; i < 2; ++i)
        resultOf(client.send(get(server.url(page))));
    ASSERT_EQ(server.requests().size(), 2) << "answered from a cache";
    for (const char *header : {"Cookie", "Cache-Control", "Pragma", "If-None-Match", "If-Modified-Since"})
        EXPECT_TRUE(server.requests().back().header(header).isNull()) << header;
}

TEST(HttpClientTest, EveryStatusIsAnAnswer) {
    for (const int status : {204, 304, 401, 407, 500}) {
        ScriptedServer server;
        const QByteArray body = status < 400 ? "" : "text";
        server.script("/page", {{status, body, {{"WWW-Authenticate", "Basic realm=x"}}}});
        HttpClient client;
        const auto response = resultOf(client.send(get(server.url(page))));
        EXPECT_EQ(response.status, status);
        EXPECT_EQ(response.body, body) << status;
        EXPECT_EQ(server.requests().size(), 1) << status;
    }
}

TEST(HttpClientTest, FollowsNoRedirect) {
    ScriptedServer other;
    for (const int status : {302, 303, 307}) {
        ScriptedServer server;
        server.script("/page", {redirectTo(other.url(page), status), redirectTo(server.url(page), status)});
        HttpClient client;
        for (const auto method : {HttpMethod::get, HttpMethod::post}) {
            HttpRequest request = get(server.url(page));
            request.method = method;
            EXPECT_EQ(resultOf(client.send(request)).status, status);
        }
        EXPECT_EQ(server.requests().size(), 2);
    }
    EXPECT_EQ(other.connectionCount(), 0);
}

TEST(HttpClientTest, TellsFaultsApart) {
    const struct {
        Ending ending;
        QByteArray body;
        Kind kind;
    } rows[] = {
        {Ending::cut, "a body of some length", Kind::incomplete},
        {Ending::raw, "SSH-2.0-OpenSSH_9.2\r\n", Kind::incomplete},
        {Ending::silence, {}, Kind::timedOut},
        {Ending::trickle, "x", Kind::timedOut},
    };
    for (const auto &row : rows) {
        ScriptedServer server;
        server.script("/page", {{200, row.body, {}, row.ending}});
        HttpClient client(row.kind == Kind::timedOut ? impatient : HttpLimits());
        const auto error = errorOf<TransportError>(client.send(get(server.url(page))));
        EXPECT_EQ(error.kind(), row.kind)
            << "ending " << static_cast<int>(row.ending) << ": " << error.what();
        EXPECT_EQ(std::string(error.what()).find("127.0.0.1"), std::string::npos) << error.what();
    }
}

TEST(HttpClientTest, NothingIsPostedTwice) {
    const ScriptedAnswer answer{200, "answer"};
    const ScriptedAnswer hangUp{.ending = Ending::hangUp};
    const ScriptedAnswer garbage{200, "SSH-2.0-OpenSSH_9.2\r\n", {}, Ending::raw};
    const ScriptedAnswer cut{200, "a body of some length", {}, Ending::cut};
    const struct {
        const char *what;
        std::vector<ScriptedAnswer> answers;
    } rows[] = {
        {"fresh connection, no answer", {hangUp}},
        // Where the library might take the end for one of idleness.
        {"used connection, no answer", {answer, hangUp}},
        {"used connection, garbage", {answer, garbage}},
        {"fresh connection, half an answer", {cut}},
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

TEST(HttpClientTest, AStatusCountsEvenWhenItsBodyIsBroken) {
    for (const auto ending : {Ending::cut, Ending::trickle, Ending::endless}) {
        ScriptedServer server;
        server.script("/page", {{403, "some text", {}, ending}});
        HttpClient client(ending == Ending::trickle ? impatient : HttpLimits());
        EXPECT_EQ(resultOf(client.send(get(server.url(page)))).status, 403) << static_cast<int>(ending);
    }
}

TEST(HttpClientTest, AnUnreachableServerIsTold) {
    QTcpServer closed;
    ASSERT_TRUE(closed.listen(QHostAddress::LocalHost));
    const QUrl url(QStringLiteral("http://127.0.0.1:%1/").arg(closed.serverPort()));
    closed.close();
    HttpClient client;
    EXPECT_EQ(errorOf<TransportError>(client.send(get(url))).kind(), Kind::unreachable);
}

TEST(HttpClientTest, OnlyHttpIsAnAnswer) {
    HttpClient client;
    const auto error = errorOf<TransportError>(client.send(get(QUrl(QStringLiteral("data:,text")))));
    EXPECT_EQ(error.kind(), Kind::notHttp);
}

TEST(HttpClientTest, BodiesHaveALimit) {
    ScriptedServer server;
    const QByteArray large(1 << 20, 'x');
    server.script("/page", {{200, large}, {200, large + 'x'}, {200, large, {}, Ending::endless}});
    HttpClient client;
    EXPECT_EQ(resultOf(client.send(get(server.url(page)))).body, large);
    for (int i = 0; i < 2; ++i)
        EXPECT_EQ(errorOf<TransportError>(client.send(get(server.url(page)))).kind(), Kind::tooLarge);
}

TEST(HttpClientTest, ServersProveTheirIdentity) {
    const struct {
        ScriptedServer::Transport transport;
        bool trusted;
        bool answers;
    } rows[] = {{ScriptedServer::Transport::encrypted, true, true},
                {ScriptedServer::Transport::encrypted, false, false},
                {ScriptedServer::Transport::encryptedElsewhere, true, false}};
    for (const auto &row : rows) {
        ScriptedServer server(row.transport);
        server.script("/page", {{200, "answer"}});
        const Trusted trusted(row.trusted ? server.certificate() : QSslCertificate());
        HttpClient client;
        if (row.answers) {
            EXPECT_EQ(resultOf(client.send(get(server.url(page)))).body, "answer");
        } else {
            EXPECT_EQ(errorOf<TransportError>(client.send(get(server.url(page)))).kind(),
                      Kind::untrustedServer);
            EXPECT_TRUE(server.requests().empty()) << "the token went out";
        }
    }
}

/// The proxies in the environment, while it lives.
struct ProxySetting {
    explicit ProxySetting(const QByteArray &proxy)
        : http("http_proxy", proxy)
        , https("https_proxy", proxy) {}
    test::EnvironmentVariable http, https;
};

/// In a network for documentation: nobody is there.
const QUrl elsewhere(QStringLiteral("http://192.0.2.1/page"));

TEST(HttpClientTest, NoProxySeesWhatGoesToLoopback) {
    ScriptedServer proxy;
    ScriptedServer server;
    server.script("/page", {{200, "answer"}});
    const ProxySetting setting(proxy.url().toEncoded());
    HttpClient client;
    EXPECT_EQ(resultOf(client.send(get(server.url(page)))).body, "answer");
    EXPECT_EQ(proxy.connectionCount(), 0);
}

TEST(HttpClientTest, TheSystemsProxyIsUsed) {
    ScriptedServer proxy;
    proxy.script(elsewhere.toEncoded(), {{200, "first"}, {200, "second"}});
    const ProxySetting setting(proxy.url().toEncoded());
    HttpClient client;
    EXPECT_EQ(resultOf(client.send(get(elsewhere))).body, "first");
    EXPECT_EQ(resultOf(client.send(get(elsewhere))).body, "second");
}

TEST(HttpClientTest, ASlowProxySettingFreezesNothing) {
    QTcpServer silence; // where the setting's script is said to be
    ASSERT_TRUE(silence.listen(QHostAddress::LocalHost));
    const ProxySetting setting("pac+http://127.0.0.1:" + QByteArray::number(silence.serverPort()) + "/p.pac");

    HttpClient client(impatient);
    EXPECT_EQ(errorOf<TransportError>(client.send(get(elsewhere))).kind(), Kind::timedOut);
    EXPECT_TRUE(waitFor([&silence] { return silence.hasPendingConnections(); })) << "nobody asked";

    auto leaving = std::make_unique<HttpClient>();
    const auto outcome = test::outcomeOf(leaving->send(get(elsewhere)));
    EXPECT_FALSE(outcome->done());
    leaving.reset();
    ASSERT_TRUE(outcome->error);
    EXPECT_THROW(std::rethrow_exception(outcome->error), TransportError);

    ScriptedServer server;
    server.script("/page", {{200, "answer"}});
    EXPECT_EQ(resultOf(client.send(get(server.url(page)))).body, "answer") << "loopback needs no answer";
}

TEST(HttpClientTest, AHeaderIsOneLine) {
    ScriptedServer server;
    HttpClient client;
    HttpRequest request{HttpMethod::get, server.url(page), {{"Authorization", "Bearer a\r\nX-Evil: 1"}}, {}};
    const auto error = errorOf<TransportError>(client.send(request));
    EXPECT_EQ(error.kind(), Kind::invalidRequest);
    EXPECT_EQ(server.connectionCount(), 0);
}

TEST(HttpClientTest, ItsEndEndsWhatIsUnderWay) {
    ScriptedServer server;
    server.script("/page", {{200, {}, {}, Ending::silence}, {200, "x", {}, Ending::trickle}});
    auto client = std::make_unique<HttpClient>();
    const auto first = test::outcomeOf(client->send(get(server.url(page))));
    const auto second = test::outcomeOf(client->send(get(server.url(page))));
    ASSERT_TRUE(waitFor([&server] { return server.requests().size() == 2; }));
    const auto unsent = test::outcomeOf(client->send(get(server.url(page))));
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
