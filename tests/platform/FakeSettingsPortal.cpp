// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/FakeSettingsPortal.h"

#include "support/PrivateBus.h"

#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusVariant>

namespace burnwick {

namespace {

const QString path = QStringLiteral("/org/freedesktop/portal/desktop");
const QString interface = QStringLiteral("org.freedesktop.portal.Settings");

} // namespace

FakeSettingsPortal::FakeSettingsPortal(QString name)
    : m_name(std::move(name))
    , m_connection(sessionBusOfTests().connect(m_name)) {
    m_connection.registerVirtualObject(path, this);
    m_connection.interface()->registerService(QStringLiteral("org.freedesktop.portal.Desktop"),
                                              QDBusConnectionInterface::ReplaceExistingService,
                                              QDBusConnectionInterface::AllowReplacement);
}

FakeSettingsPortal::~FakeSettingsPortal() {
    QDBusConnection::disconnectFromBus(m_name);
}

QString FakeSettingsPortal::introspect(const QString &) const {
    return {};
}

bool FakeSettingsPortal::handleMessage(const QDBusMessage &message, const QDBusConnection &) {
    if (message.interface() != interface || message.member() != QLatin1String("Read"))
        return false;
    ++calls;
    if (silent)
        m_held.append(message);
    else
        answer(message);
    return true;
}

void FakeSettingsPortal::answerHeldCalls() {
    for (const QDBusMessage &call : std::exchange(m_held, {}))
        answer(call);
}

void FakeSettingsPortal::answer(const QDBusMessage &call) {
    const QVariant value = answers.value(call.arguments().value(1).toString());
    m_connection.send(value.isValid()
                          ? call.createReply(value)
                          : call.createErrorReply(QStringLiteral("org.freedesktop.portal.Error.NotFound"),
                                                  QStringLiteral("Requested setting not found")));
}

void FakeSettingsPortal::announce(const QString &group, const QString &key, const QVariant &value) {
    sendSettingChanged(m_connection, group, key, value);
}

QVariant wrapped(const QVariant &value, int depth) {
    return depth == 0 ? value : QVariant::fromValue(QDBusVariant(wrapped(value, depth - 1)));
}

void sendSettingChanged(const QDBusConnection &sender, const QString &group, const QString &key,
                        const QVariant &value) {
    QDBusMessage signal = QDBusMessage::createSignal(path, interface, QStringLiteral("SettingChanged"));
    signal.setArguments({group, key, value});
    sender.send(signal);
    // Not before the bus has passed it on: what another connection asks of it later comes after.
    static_cast<void>(sender.interface()->isServiceRegistered(sender.baseService()));
}

} // namespace burnwick
