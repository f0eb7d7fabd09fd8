// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QStringList>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusVirtualObject>

#include <vector>

namespace burnwick {

/// A keyring on a connection of its own to the tests' bus. It answers as gnome-keyring does, and only
/// sessions without encryption.
class FakeSecretService final : public QDBusVirtualObject {
    Q_OBJECT

public:
    struct Item {
        QByteArray secret;
        qulonglong modified = 0; ///< seconds since 1970
        bool locked = false;
        QString service = QStringLiteral("Claude Code-credentials");
        QString contentType = QStringLiteral("text/plain");
    };

    /// Takes the keyring's name, also from another one. `name` tells connections apart.
    explicit FakeSecretService(QString name = QStringLiteral("fake-keyring"));
    ~FakeSecretService() override;

    std::vector<Item> items;
    QString silentMethod; ///< calls of it are never answered
    QString leavesAfter;  ///< once it answered a call of that method, the keyring is gone
    QStringList calls;    ///< the methods, in their order
    int openSessions = 0;

    [[nodiscard]] QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &message);
    [[nodiscard]] QDBusMessage answerSearch(const QDBusMessage &message) const;
    [[nodiscard]] QDBusMessage answerForItem(const QDBusMessage &message, Item &item) const;
    void leave();

    QString m_name;
};

} // namespace burnwick
