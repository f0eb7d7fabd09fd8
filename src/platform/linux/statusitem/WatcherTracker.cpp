// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/WatcherTracker.h"

#include "platform/linux/bus/MessageBus.h"

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
    , m_owner(connection, statusNotifierWatcherName()) {
    connect(&m_owner, &ServiceOwner::changed, this, [this](const QString &owner) {
        if (owner.isEmpty())
            Q_EMIT absent();
        else
            identify(owner);
    });
}

void WatcherTracker::identify(const QString &owner) {
    const auto call = callMessageBus(m_connection, QStringLiteral("GetConnectionUnixProcessID"), {owner});
    connect(new QDBusPendingCallWatcher(call, this), &QDBusPendingCallWatcher::finished, this,
            [this, owner](QDBusPendingCallWatcher *finished) {
                finished->deleteLater();
                if (m_owner.name() != owner)
                    return;
                const QDBusPendingReply<uint> pid = *finished;
                Q_EMIT appeared(trayHostFor(pid.isValid() ? processNameOf(pid.value()) : std::string()));
            });
}

} // namespace burnwick
