// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/bus/ServiceOwner.h"
#include "platform/linux/statusitem/TrayHost.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

namespace burnwick {

/// The name under which a desktop's status area takes items.
[[nodiscard]] QString statusNotifierWatcherName();

/// Follows who owns statusNotifierWatcherName() and what kind of host that is. The first signal comes once
/// the bus has answered.
class WatcherTracker final : public QObject {
    Q_OBJECT

public:
    explicit WatcherTracker(const QDBusConnection &connection);

Q_SIGNALS:
    /// A watcher that knows no item of ours: the first, another or a restarted one.
    void appeared(const burnwick::TrayHost &host);
    /// Nobody owns the name.
    void absent();

private:
    void identify(const QString &owner);

    QDBusConnection m_connection;
    ServiceOwner m_owner;
};

} // namespace burnwick
