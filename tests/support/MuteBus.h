// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QThread>
#include <QtNetwork/QLocalServer>
#include <QtNetwork/QLocalSocket>

#include <atomic>

namespace burnwick::test {

/// A message bus that authenticates its clients and replies to none of their messages. On a separate thread:
/// clients may block the test's.
class MuteBus {
public:
    explicit MuteBus(const QString &socket) {
        m_thread.start();
        m_server.moveToThread(&m_thread);
        onThread([this, socket] {
            QObject::connect(&m_server, &QLocalServer::newConnection, &m_server, [this] { serveNext(); });
            m_server.listen(socket);
        });
    }
    ~MuteBus() {
        onThread([this] {
            m_server.close();
            m_server.moveToThread(nullptr);
        });
        m_thread.quit();
        m_thread.wait();
    }
    MuteBus(const MuteBus &) = delete;
    MuteBus &operator=(const MuteBus &) = delete;

    /// Returns the number of authenticated clients.
    [[nodiscard]] int clients() const { return m_clients; }

private:
    template <typename Work>
    void onThread(Work work) {
        QMetaObject::invokeMethod(&m_server, work, Qt::BlockingQueuedConnection);
    }
    void serveNext() {
        QLocalSocket *const client = m_server.nextPendingConnection();
        QObject::connect(client, &QLocalSocket::readyRead, client, [this, client] {
            const QByteArray said = client->readAll();
            if (said.contains("AUTH EXTERNAL"))
                client->write("OK 0123456789abcdef0123456789abcdef\r\n");
            if (said.contains("NEGOTIATE_UNIX_FD"))
                client->write("ERROR\r\n");
            m_clients += said.contains("BEGIN") ? 1 : 0;
        });
    }

    QThread m_thread;
    QLocalServer m_server;
    std::atomic<int> m_clients = 0;
};

} // namespace burnwick::test
