// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QHash>
#include <QtCore/QList>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusVirtualObject>

namespace burnwick {

/// A desktop's settings portal on a connection of its own to the tests' bus. Without a value for a key it
/// answers with the portal's error.
class FakeSettingsPortal final : public QDBusVirtualObject {
    Q_OBJECT

public:
    /// Takes the portal's name. `name` tells connections apart.
    explicit FakeSettingsPortal(QString name = QStringLiteral("fake-portal"));
    ~FakeSettingsPortal() override;

    /// As they are sent: a variant around the value is the caller's business.
    QHash<QString, QVariant> answers;
    bool silent = false; ///< a call has to wait for answerHeldCalls()
    int calls = 0;

    void answerHeldCalls();
    void announce(const QString &group, const QString &key, const QVariant &value);

    [[nodiscard]] QString introspect(const QString &path) const override;
    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override;

private:
    void answer(const QDBusMessage &call);

    QString m_name;
    QDBusConnection m_connection;
    QList<QDBusMessage> m_held;
};

/// The value in that many D-Bus variants.
[[nodiscard]] QVariant wrapped(const QVariant &value, int depth = 2);

/// Sends what the portal sends about a changed value, from any connection.
void sendSettingChanged(const QDBusConnection &sender, const QString &group, const QString &key,
                        const QVariant &value);

} // namespace burnwick
