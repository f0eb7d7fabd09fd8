// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/bus/ServiceOwner.h"
#include "platform/linux/statusitem/OneEntryMenu.h"
#include "platform/linux/statusitem/StatusNotifierObject.h"
#include "platform/linux/statusitem/TrayHost.h"

#include <QtCore/QLoggingCategory>
#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QTemporaryDir>
#include <QtDBus/QDBusConnection>

#include <optional>

namespace burnwick {

/// "burnwick.statusitem": the reasons why the item is not visible.
Q_DECLARE_LOGGING_CATEGORY(statusItemLog)

/// The item on a separate connection to the session bus. Registers with each owner of
/// org.kde.StatusNotifierWatcher, in the presentation for that owner's program.
class StatusNotifierService final : public QObject {
    Q_OBJECT

public:
    StatusNotifierService(const StatusItemContent &content, StatusNotifierObject::ActivateHandler handler);
    ~StatusNotifierService() override;

    void setContent(const StatusItemContent &content);

    /// Returns false when there is no session bus; no signal is emitted then.
    [[nodiscard]] bool isConnected() const { return m_connection.isConnected(); }

Q_SIGNALS:
    /// Emitted for the first watcher, and for each that replaces or restarts it.
    void hostAppeared();
    /// Emitted when no watcher owns the name: first when the bus has replied.
    void hostAbsent();

private Q_SLOTS:
    void onDisconnected();

private:
    void exportObjects();
    void requestName();
    void followWatcher();
    void identifyHost(const QString &watcher);
    void presentTo(const TrayHost &host);
    void writeNamedIcons();
    void registerWithWatcher();
    void updateState();

    StatusItemContent m_content;
    TrayHost m_host;
    StatusNotifierObject m_object;
    OneEntryMenu m_menu;
    std::optional<QTemporaryDir> m_namedIcons; ///< below the user's runtime directory, once a host needs it
    QString m_connectionName;
    QDBusConnection m_connection;
    QString m_serviceName; ///< sent to the watcher
    bool m_labelOverlooked = false;
    std::optional<ServiceOwner> m_watcher;
};

} // namespace burnwick
