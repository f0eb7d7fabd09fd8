// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/Dunst.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusConnectionInterface>
#include <QtDBus/QDBusReply>
#include <QtDBus/QDBusVariant>

#include <csignal>

namespace burnwick::test {

namespace {

const auto serverName = QStringLiteral("org.freedesktop.Notifications");
const auto dunstInterface = QStringLiteral("org.dunstproject.cmd0");
const auto observerName = QStringLiteral("dunst-observer");

/// Returns the folder of the services.
QString writeService(const std::filesystem::path &directory, const QString &display) {
    const auto settings = directory / "dunstrc";
    writeFile(settings, "[global]\nmarkup = full\nformat = \"%s: %b\"\n");
    const auto services = directory / "services";
    writeFile(services / "dunst.service",
              "[D-BUS Service]\nName=org.freedesktop.Notifications\nExec=/usr/bin/env DISPLAY=" +
                  display.toStdString() + " dunst -config " + settings.string() + "\n");
    return QString::fromStdString(services.string());
}

} // namespace

Dunst::Dunst()
    : m_bus(writeService(m_directory.path(), m_display.name()))
    , m_observer(m_bus.connect(observerName)) {}

Dunst::~Dunst() {
    end();
    QDBusConnection::disconnectFromBus(observerName);
}

bool Dunst::runs() const {
    return m_observer.interface()->isServiceRegistered(serverName);
}

void Dunst::end() const {
    const QDBusReply<uint> process = m_observer.interface()->servicePid(serverName);
    if (process.isValid())
        ::kill(static_cast<pid_t>(process.value()), SIGKILL);
}

QStringList Dunst::closeAll() const {
    call(dunstInterface, QStringLiteral("NotificationCloseAll"));
    const QVariantList history = call(dunstInterface, QStringLiteral("NotificationListHistory")).arguments();
    QStringList texts;
    for (const QVariantMap &entry : qdbus_cast<QList<QVariantMap>>(history.value(0)))
        texts.prepend(entry.value(QStringLiteral("message")).toString());
    return texts;
}

QDBusMessage Dunst::call(const QString &interface, const QString &method,
                         const QVariantList &arguments) const {
    QDBusMessage message = QDBusMessage::createMethodCall(
        serverName, QStringLiteral("/org/freedesktop/Notifications"), interface, method);
    message.setAutoStartService(false);
    message.setArguments(arguments);
    return m_observer.call(message);
}

} // namespace burnwick::test
