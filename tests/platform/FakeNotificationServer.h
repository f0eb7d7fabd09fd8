// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QStringList>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

#include <map>
#include <vector>

namespace burnwick {

/// A desktop's notification server on a connection of its own.
class FakeNotificationServer final : public QDBusVirtualObject {
    Q_OBJECT

public:
    struct Popup {
        QString application;
        QString icon;
        QString title;
        QString body;
        QStringList actions;
        QVariantMap hints;
        int timeout = 0;
    };

    /// Takes the server's name once nobody has it. `connectionName` tells servers apart; `firstNumber` is
    /// what the first notification gets.
    explicit FakeNotificationServer(QString connectionName = QStringLiteral("fake-notifications"),
                                    uint firstNumber = 1);
    ~FakeNotificationServer() override;

    QStringList capabilities{QStringLiteral("actions"), QStringLiteral("body"),
                             QStringLiteral("body-markup")};
    QStringList failing; ///< methods that are answered with an error
    QStringList held;    ///< methods that are answered only by release()

    std::map<uint, Popup> popups; ///< what is on the screen, by number
    QStringList calls;            ///< the methods, in their order

    /// Answers what was held so far, and from now on everything.
    void release();
    /// The popup disappears.
    void close(uint number);
    /// Signals of a click, the token's only if there is one.
    void click(uint number, const QString &token = {}, const QString &action = QStringLiteral("default"));
    /// Its connection ends; calls that are not answered fail.
    void leave();

    [[nodiscard]] QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &message);
    [[nodiscard]] uint show(const QVariantList &arguments);
    void announce(const QString &signal, const QVariantList &arguments);

    QString m_connectionName;
    QDBusConnection m_connection;
    uint m_nextNumber;
    std::vector<QDBusMessage> m_waiting;
};

} // namespace burnwick
