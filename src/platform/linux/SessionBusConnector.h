// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QElapsedTimer>
#include <QtCore/QFuture>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

#include <chrono>
#include <functional>
#include <optional>

namespace burnwick {

/// Connects to the session bus without blocking, which QDBusConnection::sessionBus() does without limit: the
/// bus may accept a connection and say nothing more. Starts no bus: there is one where sessionBusAddress()
/// says so. Main thread only.
///
/// While an attempt hangs, QtDBus makes the main thread wait in whatever else of its connections by name or
/// type: sessionBus(), systemBus(), connectToBus() and disconnectFromBus(). Calls on a connection go on.
class SessionBusConnector final : public QObject {
public:
    using Answer = std::function<void(std::optional<QDBusConnection> bus)>;

    /// Connectors with the same name of a connection share it. It stays until the program ends.
    explicit SessionBusConnector(QString connectionName, QObject *parent = nullptr);

    /// Answers once, with a working connection or with none, on the main thread; at once where there is no
    /// bus. An attempt that hangs is given up after `limit`, counted from its start, but not repeated: until
    /// it ends, whoever asks is told at once that there is none. The answer is dropped when this object goes.
    void connectWithin(std::chrono::milliseconds limit, Answer answer);

private:
    using Connection = std::optional<QDBusConnection>;

    QString m_connectionName;
    QFuture<Connection> m_attempt;
    QElapsedTimer m_sinceStart; ///< of the attempt
};

} // namespace burnwick
