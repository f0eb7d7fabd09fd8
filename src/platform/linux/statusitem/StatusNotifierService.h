// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/statusitem/NamedStatusIcons.h"
#include "platform/linux/statusitem/OneEntryMenu.h"
#include "platform/linux/statusitem/StatusNotifierObject.h"
#include "platform/linux/statusitem/TrayHost.h"
#include "platform/linux/statusitem/WatcherTracker.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

#include <memory>
#include <optional>

namespace burnwick {

/// The item on the session bus, on a connection of its own. It registers with every watcher that appears and
/// presents itself as that watcher's host can show it.
class StatusNotifierService final : public QObject {
    Q_OBJECT

public:
    StatusNotifierService(const StatusItemContent &content, StatusNotifierObject::ActivateHandler handler);
    ~StatusNotifierService() override;

    void setContent(const StatusItemContent &content);

    /// False: there is no session bus, and no signal will ever come.
    [[nodiscard]] bool isConnected() const { return m_connection.isConnected(); }

Q_SIGNALS:
    void hostAppeared();
    /// Nobody on the bus takes status items (any more).
    void hostAbsent();

private Q_SLOTS:
    void onDisconnected();

private:
    void exportObjects();
    void requestName();
    void followWatcher();
    void presentTo(const TrayHost &host);
    void registerWithWatcher();
    void updateState();

    StatusItemContent m_content;
    TrayHost m_host;
    StatusNotifierObject m_object;
    OneEntryMenu m_menu;
    std::optional<NamedStatusIcons> m_namedIcons; ///< once a host needs them
    QString m_connectionName;
    QDBusConnection m_connection;
    QString m_serviceName; ///< what the watcher is told
    bool m_labelOverlooked = false;
    std::unique_ptr<WatcherTracker> m_watcherTracker;
};

} // namespace burnwick
