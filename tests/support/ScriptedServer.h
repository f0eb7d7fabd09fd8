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

/// What a ScriptedServer gives in answer to one request.
struct ScriptedAnswer {
    enum class Ending {
        complete, ///< the body whole
        cut,      ///< half of the announced body, then the connection breaks
        stall,    ///< the status and headers, then silence
        trickle,  ///< the body over and over, a little every few milliseconds
        endless,  ///< the body over and over, as fast as it is taken
        silence,  ///< nothing at all
        hangUp,   ///< nothing, and the connection breaks
        raw,      ///< the body alone, without status and headers
    };

    int status = 200;
    QByteArray body = {};
    std::vector<std::pair<QByteArray, QByteArray>> headers = {};
    Ending ending = Ending::complete;
    bool held = false; ///< not before ScriptedServer::release()
};

[[nodiscard]] ScriptedAnswer redirectTo(const QUrl &target, int status = 302);
[[nodiscard]] ScriptedAnswer held(ScriptedAnswer answer);

struct RecordedRequest {
    QByteArray method;
    QByteArray target; ///< path and query
    std::vector<std::pair<QByteArray, QByteArray>> headers;
    QByteArray body;

    /// The value of the header, ignoring the case of the name; null if absent.
    [[nodiscard]] QByteArray header(const QByteArray &name) const;
};

/// An HTTP server on a free port of the loopback interface. It records what it is asked and answers by a
/// script for each target: the answers one after the other, the last one again and again, 404 for anything
/// else. Runs in the event loop of its thread.
class ScriptedServer final : public QObject {
public:
    enum class Transport {
        plain,
        encrypted,          ///< with a certificate for localhost, signed by itself
        encryptedElsewhere, ///< with a certificate for another host, signed by itself
    };

    explicit ScriptedServer(Transport transport = Transport::plain);
    ~ScriptedServer() override;

    [[nodiscard]] QUrl url(const QString &path = {}) const;
    /// To be trusted by clients that shall reach this server encrypted.
    [[nodiscard]] const QSslCertificate &certificate() const { return m_certificate; }

    void script(const QByteArray &target, std::vector<ScriptedAnswer> answers);
    /// Lets go all the answers that are held, and holds none from now on.
    void release();
    /// Ends all connections, also those that are kept for later requests.
    void endConnections();

    /// In the order in which they came.
    [[nodiscard]] const std::vector<RecordedRequest> &requests() const { return m_requests; }
    [[nodiscard]] std::vector<RecordedRequest> requestsFor(const QByteArray &target) const;
    [[nodiscard]] int connectionCount() const { return m_connectionCount; }

private:
    void accept();
    void read(QTcpSocket *socket);
    void answer(QTcpSocket *socket, const ScriptedAnswer &answer);
    [[nodiscard]] ScriptedAnswer nextAnswerFor(const QByteArray &target);

    Transport m_transport;
    QSslCertificate m_certificate;
    std::unique_ptr<QTcpServer> m_server;
    std::map<QByteArray, std::vector<ScriptedAnswer>> m_script;
    std::map<QTcpSocket *, QByteArray> m_unread;
    std::vector<std::pair<QPointer<QTcpSocket>, ScriptedAnswer>> m_held;
    bool m_released = false;
    std::vector<RecordedRequest> m_requests;
    int m_connectionCount = 0;
};

} // namespace burnwick::test
