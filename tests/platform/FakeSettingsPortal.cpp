// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeSettingsPortal.h"

#include <QtDBus/QDBusVariant>

namespace burnwick {

namespace {

const QString path = QStringLiteral("/org/freedesktop/portal/desktop");

} // namespace

FakeSettingsPortal::FakeSettingsPortal(QString name)
    : FakeService(std::move(name), QStringLiteral("org.freedesktop.portal.Desktop"), path) {}

QDBusMessage FakeSettingsPortal::answerTo(const QDBusMessage &call) {
    const QVariant value = answers.value(call.arguments().value(1).toString());
    if (value.isValid())
        return call.createReply(value);
    return call.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                                 QStringLiteral("Requested setting not found"));
}

void FakeSettingsPortal::announce(const QString &group, const QString &key, const QVariant &value) {
    sendSettingChanged(connection(), group, key, value);
}

QVariant wrapped(const QVariant &value, int depth) {
    return depth == 0 ? value : QVariant::fromValue(QDBusVariant(wrapped(value, depth - 1)));
}

void sendSettingChanged(const QDBusConnection &sender, const QString &group, const QString &key,
                        const QVariant &value) {
    QDBusMessage signal = QDBusMessage::createSignal(path, QStringLiteral("org.freedesktop.portal.Settings"),
                                                     QStringLiteral("SettingChanged"));
    signal.setArguments({group, key, value});
    sender.send(signal);
    // Not before the bus has passed it on: what another connection asks of it later comes after.
    static_cast<void>(sender.interface()->isServiceRegistered(sender.baseService()));
}

} // namespace burnwick
