// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusServiceWatcher>

class QDBusMessage;

namespace burnwick {

/// Follows values of the desktop's settings portal (org.freedesktop.portal.Settings). Nothing blocks.
///
/// There is no limit of our own to the time of an answer: a late one is better than none, and a portal may
/// be slow while the desktop starts.
class PortalSettings final : public QObject {
    Q_OBJECT

public:
    explicit PortalSettings(const QDBusConnection &bus);

    /// Asks for the value, and once more each time when the portal comes back. Starts the portal where the
    /// desktop has one.
    void follow(const QString &group, const QString &key);

Q_SIGNALS:
    /// The value without its D-Bus variants, or a new one; invalid when the portal did not tell it. Never
    /// from within follow().
    void told(const QString &key, const QVariant &value);

private:
    struct Setting {
        QString group;
        QString key;
    };

    void read(const Setting &setting);
    void askForOwner();
    void setOwner(const QString &owner);

private Q_SLOTS:
    void onSettingChanged(const QDBusMessage &message);

private:
    QDBusConnection m_bus;
    QDBusServiceWatcher m_ownerChanges;
    QString m_owner; ///< the portal's unique name; empty while unknown
    QList<Setting> m_settings;
};

} // namespace burnwick
