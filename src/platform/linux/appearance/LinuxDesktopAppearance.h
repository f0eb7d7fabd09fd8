// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/DesktopAppearance.h"
#include "platform/linux/appearance/PortalSettings.h"

#include <QtDBus/QDBusConnection>

#include <optional>

namespace burnwick {

/// Asks the desktop's settings portal. What it said holds while it is away.
class LinuxDesktopAppearance final : public DesktopAppearance {
public:
    explicit LinuxDesktopAppearance(const QDBusConnection &bus = QDBusConnection::sessionBus());

    void follow(Handler handler) override;

private:
    void take(const QString &key, const QVariant &value);

    Handler m_handler;
    AppearanceWishes m_wishes;
    std::optional<AppearanceWishes> m_told;
    QDBusConnection m_bus;
    std::optional<PortalSettings> m_portal;
};

} // namespace burnwick
