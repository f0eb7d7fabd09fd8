// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopAppearance.h"
#include "platform/linux/bus/ServiceOwner.h"

#include <QtCore/QObject>
#include <QtCore/QVariant>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <optional>

namespace burnwick {

/// Reads the desktop's settings portal (org.freedesktop.portal.Settings), which it starts where the desktop
/// has one. Its latest values hold while the portal is away. Nothing blocks, and a reply may take its time: a
/// late one is better than none, and a portal may be slow while the desktop starts.
class LinuxDesktopAppearance final : public QObject, public DesktopAppearance {
    Q_OBJECT

public:
    explicit LinuxDesktopAppearance(const QDBusConnection &bus = QDBusConnection::sessionBus());

    void follow(Handler handler) override;

private:
    void readAll();
    void take(const QString &key, const QVariant &value);

private Q_SLOTS:
    void onSettingChanged(const QDBusMessage &message);

private:
    QDBusConnection m_bus;
    Handler m_handler;
    AppearanceWishes m_wishes;
    std::optional<AppearanceWishes> m_announced;
    std::optional<ServiceOwner> m_portal;
    bool m_hasRead = false; ///< an absent portal is called once, which starts it
};

} // namespace burnwick
