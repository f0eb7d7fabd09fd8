// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/bus/ServiceOwner.h"

#include <QtCore/QList>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>

class QDBusMessage;

namespace burnwick {

/// Follows values of the desktop's settings portal (org.freedesktop.portal.Settings). Nothing blocks.
///
/// There is no limit of our own to the time of an answer: a late one is better than none, and a portal may
/// be slow while the desktop starts.
class PortalSettings final : public QObject {
    Q_OBJECT

public:
    struct Setting {
        QString group;
        QString key;
    };

    /// Asks for the values, and once more each time when the portal comes back. Starts the portal where the
    /// desktop has one.
    PortalSettings(const QDBusConnection &bus, QList<Setting> settings);

Q_SIGNALS:
    /// The value without its D-Bus variants, or a new one; invalid when the portal did not tell it.
    void told(const QString &key, const QVariant &value);

private:
    void tellNothing();
    void readAll();
    void read(const Setting &setting);

private Q_SLOTS:
    void onSettingChanged(const QDBusMessage &message);

private:
    QDBusConnection m_bus;
    QList<Setting> m_settings;
    ServiceOwner m_owner;
    bool m_asked = false; ///< at all: an absent portal is asked for once, which starts it
};

} // namespace burnwick
