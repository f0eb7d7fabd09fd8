// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/WatcherTracker.h"

#include "platform/linux/MessageBus.h"

#include <QtDBus/QDBusPendingCallWatcher>
#include <QtDBus/QDBusPendingReply>

#include <fstream>
#include <string>

namespace burnwick {

namespace {

/// Empty when the process is gone or hidden from us.
std::string processNameOf(uint pid) {
    std::ifstream file("/proc/" + std::to_string(pid) + "/comm");
    std::string name;
    std::getline(file, name);
    return name;
}

} // namespace

QString statusNotifierWatcherName() {
    return QStringLiteral("org.kde.StatusNotifierWatcher");
}

WatcherTracker::WatcherTracker(const QDBusConnection &connection)
    : m_connection(connection)
    , m_ownerChanges(statusNotifierWatcherName(), connection, QDBusServiceWatcher::WatchForOwnerChange) {
    connect(&m_ownerChanges, &QDBusServiceWatcher::serviceOwnerChanged, this,
            [this](const QString &, const QString &, const QString &newOwner) { setOwner(newOwner); });
    askForOwner();
}

void WatcherTracker::askForOwner() {
    const auto call =
        callMessageBus(m_connection, QStringLiteral("GetNameOwner"), {statusNotifierWatcherName()});
    connect(new QDBusPendingCallWatcher(call, this), &QDBusPendingCallWatcher::finished, this,
            [this](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                const QDBusPendingReply<QString> owner = *finished;
                if (!m_owner) // otherwise a change was announced meanwhile, which is newer
                    setOwner(owner.isValid() ? owner.value() : QString());
            });
}

void WatcherTracker::setOwner(const QString &owner) {
    if (m_owner == owner)
        return;
    m_owner = owner;
    if (owner.isEmpty())
        Q_EMIT absent();
    else
        identifyOwner();
}

void WatcherTracker::identifyOwner() {
    const QString asked = *m_owner;
    const auto call = callMessageBus(m_connection, QStringLiteral("GetConnectionUnixProcessID"), {asked});
    connect(new QDBusPendingCallWatcher(call, this), &QDBusPendingCallWatcher::finished, this,
            [this, asked](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (m_owner != asked)
                    return;
                const QDBusPendingReply<uint> pid = *finished;
                Q_EMIT appeared(trayHostFor(pid.isValid() ? processNameOf(pid.value()) : std::string()));
            });
}

} // namespace burnwick
