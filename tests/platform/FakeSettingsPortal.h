// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/FakeService.h"

#include <QtCore/QHash>
#include <QtDBus/QDBusVariant>

namespace burnwick {

/// Returns the value in that many D-Bus variants.
[[nodiscard]] inline QVariant wrapped(const QVariant &value, int depth = 2) {
    return depth == 0 ? value : QVariant::fromValue(QDBusVariant(wrapped(value, depth - 1)));
}

/// A desktop's settings portal. Without a value for a key it replies with the portal's error.
class FakeSettingsPortal final : public FakeService {
public:
    explicit FakeSettingsPortal(QString name = QStringLiteral("fake-portal"))
        : FakeService(std::move(name), QStringLiteral("org.freedesktop.portal.Desktop"), path()) {}

    QHash<QString, QVariant> answers; ///< sent as they are, without further variants

    void announce(const char *group, const char *key, const QVariant &value) const {
        announceAs(connection(), group, key, value);
    }
    /// Sends the portal's signal on any connection.
    static void announceAs(const QDBusConnection &sender, const char *group, const char *key,
                           const QVariant &value) {
        QDBusMessage signal = QDBusMessage::createSignal(
            path(), QStringLiteral("org.freedesktop.portal.Settings"), QStringLiteral("SettingChanged"));
        signal.setArguments({QLatin1String(group), QLatin1String(key), value});
        sender.send(signal);
        // Blocks until the bus has passed it on: it precedes later calls of other connections.
        static_cast<void>(sender.interface()->isServiceRegistered(sender.baseService()));
    }

private:
    static QString path() { return QStringLiteral("/org/freedesktop/portal/desktop"); }
    [[nodiscard]] QDBusMessage answerTo(const QDBusMessage &call) override {
        const QVariant value = answers.value(call.arguments().value(1).toString());
        return value.isValid()
                   ? call.createReply(value)
                   : call.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"), {});
    }
};

} // namespace burnwick
