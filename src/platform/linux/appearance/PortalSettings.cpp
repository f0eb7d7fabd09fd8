// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/appearance/PortalSettings.h"

#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>
#include <QtDBus/QDBusVariant>

#include <algorithm>
#include <utility>

namespace burnwick {

namespace {

constexpr QLatin1String portalName("org.freedesktop.portal.Desktop");
constexpr QLatin1String portalPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String settingsInterface("org.freedesktop.portal.Settings");

/// Read() wraps a value twice, the signal once.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

} // namespace

PortalSettings::PortalSettings(const QDBusConnection &bus, QList<Setting> settings)
    : m_bus(bus)
    , m_settings(std::move(settings))
    , m_owner(bus, portalName) {
    if (!m_bus.isConnected()) {
        QMetaObject::invokeMethod(this, &PortalSettings::tellNothing, Qt::QueuedConnection);
        return;
    }
    connect(&m_owner, &ServiceOwner::changed, this, [this](const QString &owner) {
        if (!owner.isEmpty() || !m_asked)
            readAll();
    });
    // From any sender: given the portal's name, this call would wait for the bus to say whose it is.
    [[maybe_unused]] const bool connected =
        m_bus.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                      SLOT(onSettingChanged(QDBusMessage)));
    Q_ASSERT(connected);
}

void PortalSettings::tellNothing() {
    for (const Setting &setting : std::as_const(m_settings))
        Q_EMIT told(setting.key, {});
}

void PortalSettings::readAll() {
    m_asked = true;
    for (const Setting &setting : std::as_const(m_settings))
        read(setting);
}

void PortalSettings::read(const Setting &setting) {
    QDBusMessage message =
        QDBusMessage::createMethodCall(portalName, portalPath, settingsInterface, QStringLiteral("Read"));
    message.setArguments({setting.group, setting.key});
    const auto call = m_bus.asyncCall(message);
    connect(new QDBusPendingCallWatcher(call, this), &QDBusPendingCallWatcher::finished, this,
            [this, key = setting.key](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusPendingReply<QDBusVariant> value = *finished;
                Q_EMIT told(key, value.isValid() ? unwrapped(value.value().variant()) : QVariant());
            });
}

void PortalSettings::onSettingChanged(const QDBusMessage &message) {
    if (message.service() != m_owner.name() || message.signature() != QLatin1String("ssv"))
        return;
    const auto arguments = message.arguments();
    const bool followed =
        std::any_of(m_settings.cbegin(), m_settings.cend(), [&arguments](const Setting &setting) {
            return setting.group == arguments[0].toString() && setting.key == arguments[1].toString();
        });
    if (followed)
        Q_EMIT told(arguments[1].toString(), unwrapped(arguments[2]));
}

} // namespace burnwick
