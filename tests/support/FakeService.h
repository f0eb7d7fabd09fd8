// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/PrivateBus.h"

#include <QtCore/QStringList>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

#include <utility>
#include <vector>

namespace burnwick {

/// A service of a desktop on a separate connection to the tests' bus. It replies to all calls of its object
/// and of those below.
class FakeService : public QDBusVirtualObject {
public:
    ~FakeService() override { leave(); }

    QStringList calls; ///< the called methods, in order
    QStringList held;  ///< methods without a reply before release()

    /// Replies to the held calls, and from now on to all.
    void release() {
        held.clear();
        for (const QDBusMessage &message : std::exchange(m_waiting, {}))
            static_cast<void>(m_connection.send(answerTo(message)));
    }
    /// Closes its connection: calls without a reply fail.
    void leave() {
        m_connection = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(m_connectionName);
    }

    [[nodiscard]] QString introspect(const QString &) const final { return {}; }
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &) override {
        calls.append(message.member());
        if (held.contains(message.member()))
            m_waiting.push_back(message);
        else
            static_cast<void>(m_connection.send(answerTo(message)));
        return true;
    }

protected:
    /// Acquires the name, also from another fake service with another `connectionName`.
    FakeService(QString connectionName, const QString &serviceName, const QString &path)
        : m_connectionName(std::move(connectionName))
        , m_connection(sessionBusOfTests().connect(m_connectionName)) {
        m_connection.registerVirtualObject(path, this, QDBusConnection::SubPath);
        m_connection.interface()->registerService(serviceName,
                                                  QDBusConnectionInterface::ReplaceExistingService,
                                                  QDBusConnectionInterface::AllowReplacement);
    }

    [[nodiscard]] virtual QDBusMessage answerTo(const QDBusMessage &call) = 0;
    [[nodiscard]] const QDBusConnection &connection() const { return m_connection; }

private:
    QString m_connectionName;
    QDBusConnection m_connection;
    std::vector<QDBusMessage> m_waiting;
};

} // namespace burnwick
