// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/LinuxDesktopAppearance.h"

#include "platform/Platform.h"

#include <utility>

namespace burnwick {

namespace {

constexpr QLatin1String colorSchemeKey("color-scheme");
constexpr QLatin1String animationsKey("enable-animations");

/// The portal's numbers: 1 is dark, 2 is light, all else is no preference.
AppearanceWishes::Colors colorsOf(const QVariant &value) {
    const uint number = value.typeId() == QMetaType::UInt ? value.toUInt() : 0;
    switch (number) {
    case 1:
        return AppearanceWishes::Colors::dark;
    case 2:
        return AppearanceWishes::Colors::light;
    default:
        return AppearanceWishes::Colors::noPreference;
    }
}

bool isFalse(const QVariant &value) {
    return value.typeId() == QMetaType::Bool && !value.toBool();
}

} // namespace

LinuxDesktopAppearance::LinuxDesktopAppearance(const QDBusConnection &bus)
    : m_bus(bus) {}

void LinuxDesktopAppearance::follow(Handler handler) {
    m_handler = std::move(handler);
    // The colours last: with their answer all is known.
    m_portal.emplace(m_bus, QList<PortalSettings::Setting>{
                                {QStringLiteral("org.gnome.desktop.interface"), animationsKey},
                                {QStringLiteral("org.freedesktop.appearance"), colorSchemeKey}});
    QObject::connect(&*m_portal, &PortalSettings::told, &*m_portal,
                     [this](const QString &key, const QVariant &value) { take(key, value); });
}

void LinuxDesktopAppearance::take(const QString &key, const QVariant &value) {
    const bool areColors = key == colorSchemeKey;
    if (value.isValid() && areColors)
        m_wishes.colors = colorsOf(value);
    else if (value.isValid())
        m_wishes.reducedMotion = isFalse(value);
    if (m_told == m_wishes || !(m_told || areColors))
        return;
    m_told = m_wishes;
    m_handler(m_wishes);
}

std::unique_ptr<DesktopAppearance> platform::makeDesktopAppearance() {
    return std::make_unique<LinuxDesktopAppearance>();
}

} // namespace burnwick
