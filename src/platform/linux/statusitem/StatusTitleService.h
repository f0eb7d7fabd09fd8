// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/bus/ServiceOwner.h"
#include "platform/linux/statusitem/StatusTitleObject.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

#include <optional>

namespace burnwick {

/// Returns "com.burnwick.Burnwick.StatusTitle", the bus name of the title that a shell draws.
[[nodiscard]] QString statusTitleBusName();
/// Returns the path at which its owner exports StatusTitleObject.
[[nodiscard]] QString statusTitlePath();
/// Returns "com.burnwick.Burnwick.ShellExtension", the name that a shell owns while it draws the title.
[[nodiscard]] QString shellExtensionBusName();

/// The title on a separate connection to the session bus, for an extension of the shell.
class StatusTitleService final : public QObject {
    Q_OBJECT

public:
    StatusTitleService(const StatusItemContent &content, StatusItem::ActivateHandler handler);
    ~StatusTitleService() override;

    void setContent(const StatusItemContent &content);

    /// Returns false when there is no session bus; no signal is emitted then.
    [[nodiscard]] bool isConnected() const { return m_connection.isConnected(); }

Q_SIGNALS:
    /// Whether a shell draws this program's title. Emitted first when the bus has replied, then at each
    /// change.
    void drawnChanged(bool isDrawn);

private:
    void updateDrawn();

    StatusTitleObject m_object;
    QString m_connectionName;
    QDBusConnection m_connection;
    std::optional<ServiceOwner> m_title; ///< another instance may own the name
    std::optional<ServiceOwner> m_extension;
    std::optional<bool> m_isDrawn; ///< absent before the bus's reply
};

} // namespace burnwick
