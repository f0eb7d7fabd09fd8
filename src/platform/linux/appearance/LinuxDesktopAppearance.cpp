// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/bus/BusCall.h"
#include "platform/linux/bus/ServiceOwner.h"

#include <QtCore/QVariant>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusReply>
#include <QtDBus/QDBusVariant>

#include <algorithm>
#include <optional>
#include <utility>

namespace burnwick {

namespace {

constexpr QLatin1String portalName("org.freedesktop.portal.Desktop");
constexpr QLatin1String portalPath("/org/freedesktop/portal/desktop");
constexpr QLatin1String settingsInterface("org.freedesktop.portal.Settings");

constexpr QLatin1String colorSchemeKey("color-scheme");

struct Setting {
    QLatin1String group, key;
};
/// The colours are last: after their reply the first wishes are complete.
constexpr Setting settings[] = {
    {QLatin1String("org.gnome.desktop.interface"), QLatin1String("enable-animations")},
    {QLatin1String("org.freedesktop.appearance"), colorSchemeKey},
};

/// Read() returns a variant in a variant; the signal contains one variant.
QVariant unwrapped(QVariant value) {
    while (value.metaType() == QMetaType::fromType<QDBusVariant>())
        value = value.value<QDBusVariant>().variant();
    return value;
}

AppearanceWishes::Colors colorsOf(const QVariant &value) {
    const uint number = value.typeId() == QMetaType::UInt ? value.toUInt() : 0;
    return number == 1   ? AppearanceWishes::Colors::dark
           : number == 2 ? AppearanceWishes::Colors::light
                         : AppearanceWishes::Colors::noPreference;
}

} // namespace

/// Reads the desktop's settings portal (org.freedesktop.portal.Settings), and starts it if the desktop has
/// one. Keeps the latest values after the portal's end. Calls do not block, and have no time limit: a portal
/// may be slow while the desktop starts.
class LinuxDesktopAppearance final : public QObject, public DesktopAppearance {
    Q_OBJECT

public:
    void follow(Handler handler) override;
    void impose(AppearanceWishes::Colors) override {}

private:
    void readAll();
    void take(const QString &key, const QVariant &value);

private Q_SLOTS:
    void onSettingChanged(const QDBusMessage &message);

private:
    QDBusConnection m_bus = QDBusConnection::sessionBus();
    Handler m_handler;
    AppearanceWishes m_wishes;
    std::optional<AppearanceWishes> m_announced;
    std::optional<ServiceOwner> m_portal;
    bool m_hasRead = false; ///< a portal that does not run is called once, which starts it
};

void LinuxDesktopAppearance::follow(Handler handler) {
    m_handler = std::move(handler);
    m_portal.emplace(m_bus, portalName);
    connect(&*m_portal, &ServiceOwner::changed, this, [this](const QString &owner) {
        if (!owner.isEmpty() || !m_hasRead)
            readAll();
    });
    // Without a sender's name: with one, this call would block until the bus returns its owner.
    m_bus.connect(QString(), portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                  SLOT(onSettingChanged(QDBusMessage)));
}

void LinuxDesktopAppearance::readAll() {
    m_hasRead = true;
    for (const Setting &setting : settings) {
        QDBusMessage call =
            QDBusMessage::createMethodCall(portalName, portalPath, settingsInterface, QStringLiteral("Read"));
        call.setArguments({QString(setting.group), QString(setting.key)});
        whenFinished(m_bus.asyncCall(call), this, [this, key = setting.key](const QDBusMessage &reply) {
            const QDBusReply<QDBusVariant> value(reply);
            take(key, value.isValid() ? unwrapped(value.value().variant()) : QVariant());
        });
    }
}

/// `value` is invalid when the portal did not return one.
void LinuxDesktopAppearance::take(const QString &key, const QVariant &value) {
    const bool areColors = key == colorSchemeKey;
    if (value.isValid() && areColors)
        m_wishes.colors = colorsOf(value);
    else if (value.isValid())
        m_wishes.reducedMotion = value.typeId() == QMetaType::Bool && !value.toBool();
    if (m_announced == m_wishes || !(m_announced || areColors))
        return;
    m_announced = m_wishes;
    m_handler(m_wishes);
}

void LinuxDesktopAppearance::onSettingChanged(const QDBusMessage &message) {
    if (message.service() != m_portal->name() || message.signature() != QLatin1String("ssv"))
        return;
    const auto arguments = message.arguments();
    if (std::ranges::any_of(settings, [&arguments](const Setting &setting) {
            return setting.group == arguments[0].toString() && setting.key == arguments[1].toString();
        }))
        take(arguments[1].toString(), unwrapped(arguments[2]));
}

std::unique_ptr<DesktopAppearance> platform::makeDesktopAppearance() {
    return std::make_unique<LinuxDesktopAppearance>();
}

} // namespace burnwick

#include "LinuxDesktopAppearance.moc"
