// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QList>
#include <QObject>
#include <QPointer>
#include <QSslCertificate>
#include <QUrl>

#include <functional>
#include <map>
#include <memory>
#include <utility>
#include <vector>

class QTcpServer;
class QTcpSocket;

namespace burnwick::test {

/// The answer of a ScriptedServer to one request.
struct ScriptedAnswer {
    enum class Ending {
        complete, ///< the whole body
        cut,      ///< half of the announced body, then the end of the connection
        stall,    ///< status and headers alone
        trickle,  ///< the body again and again, every few milliseconds
        endless,  ///< the body again and again, without a pause
        silence,  ///< nothing
        hangUp,   ///< nothing but the end of the connection
        raw,      ///< the body without status and headers
    };

    int status = 200;
    QByteArray body = {};
    std::vector<std::pair<QByteArray, QByteArray>> headers = {};
    Ending ending = Ending::complete;
    bool held = false; ///< until ScriptedServer::release()
};

[[nodiscard]] ScriptedAnswer held(ScriptedAnswer answer);

struct RecordedRequest {
    QByteArray method;
    QByteArray target; ///< path and query
    std::vector<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;

    /// Returns the header's value, ignoring the case of the name; null if absent.
    [[nodiscard]] QByteArray header(const QByteArray &name) const;
};

/// An HTTP server on a free port of the loopback interface. It records the requests and sends the scripted
/// answers of each target in turn, the last one again and again, and 404 for other targets. Runs in the event
/// loop of its thread.
class ScriptedServer final : public QObject {
public:
    enum class Transport { plain, encrypted };

    explicit ScriptedServer(Transport transport = Transport::plain);
    ~ScriptedServer() override;

    /// Returns a URL on 127.0.0.1.
    [[nodiscard]] QUrl url(const QString &path = {}) const;
    /// Returns the self-signed certificate of encrypted servers, for localhost alone.
    [[nodiscard]] static QSslCertificate certificate();

    void script(const QByteArray &target, std::vector<ScriptedAnswer> answers);
    /// Sends all held answers, and holds none from now on.
    void release();
    /// Ends all connections, including idle ones.
    void endConnections();

    /// Returns all requests in the order of their arrival.
    [[nodiscard]] const std::vector<RecordedRequest> &requests() const { return m_requests; }
    [[nodiscard]] std::vector<RecordedRequest> requestsFor(const QByteArray &target) const;
    [[nodiscard]] int connectionCount() const { return m_connectionCount; }

private:
    void accept();
    void read(QTcpSocket *socket);
    void answer(QTcpSocket *socket, const ScriptedAnswer &answer);
    [[nodiscard]] ScriptedAnswer nextAnswerFor(const QByteArray &target);

    Transport m_transport;
    std::unique_ptr<QTcpServer> m_server;
    std::map<QByteArray, std::vector<ScriptedAnswer>> m_script;
    std::map<QTcpSocket *, QByteArray> m_unread;
    std::vector<std::pair<QPointer<QTcpSocket>, ScriptedAnswer>> m_held;
    bool m_released = false;
    std::vector<RecordedRequest> m_requests;
    int m_connectionCount = 0;
};

} // namespace burnwick::test
