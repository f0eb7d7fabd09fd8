// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/SessionBusConnector.h"

#include "platform/UnawaitedResult.h"
#include "platform/linux/SessionBusAddress.h"

#include <QtCore/QFutureWatcher>
#include <QtCore/QTimer>

#include <utility>

namespace burnwick {

namespace {

/// Blocks, perhaps for ever.
std::optional<QDBusConnection> connectTo(const QString &address, const QString &name) {
    if (const QDBusConnection former(name); former.isConnected())
        return former;
    // One whose bus has gone would be given again.
    QDBusConnection::disconnectFromBus(name);
    const auto connection = QDBusConnection::connectToBus(address, name);
    return connection.isConnected() ? std::optional(connection) : std::nullopt;
}

} // namespace

SessionBusConnector::SessionBusConnector(QString connectionName, QObject *parent)
    : QObject(parent)
    , m_connectionName(std::move(connectionName)) {}

void SessionBusConnector::connectWithin(std::chrono::milliseconds limit, Answer answer) {
    const QString address = sessionBusAddress();
    if (address.isEmpty())
        return answer(std::nullopt);
    if (m_attempt.resultCount() > 0) {
        if (const Connection last = m_attempt.result(); last && last->isConnected())
            return answer(last);
    }
    if (!m_attempt.isRunning()) {
        m_sinceStart.start();
        m_attempt = platform::unawaitedResult<Connection>(
            [address, name = m_connectionName] { return connectTo(address, name); });
    }
    const auto remaining = limit - std::chrono::milliseconds(m_sinceStart.elapsed());
    if (remaining <= std::chrono::milliseconds::zero())
        return answer(std::nullopt);

    auto *const watcher = new QFutureWatcher<Connection>(this);
    auto *const deadline = new QTimer(watcher);
    deadline->setSingleShot(true);
    connect(deadline, &QTimer::timeout, watcher, &QFutureWatcherBase::finished);
    connect(
        watcher, &QFutureWatcherBase::finished, watcher,
        [watcher, answer = std::move(answer)] {
            watcher->deleteLater();
            answer(watcher->isFinished() ? watcher->result() : std::nullopt);
        },
        Qt::SingleShotConnection);
    watcher->setFuture(m_attempt);
    deadline->start(remaining);
}

} // namespace burnwick
