// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationInstance.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QStringList>
#include <QtCore/QVariantList>
#include <QtCore/QVariantMap>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <chrono>
#include <vector>

namespace burnwick {

/// Returns "com.burnwick.Burnwick", the name that the running instance owns.
///
/// The desktop file is not DBusActivatable: its file name would have to be the bus name, and it is
/// burnwick.desktop, like the icon, the window class and the status item. Desktops use its Exec key, and a
/// second start forwards the desktop's data.
[[nodiscard]] QString applicationBusName();
/// Returns the path at which the owner of the name exports org.freedesktop.Application.
[[nodiscard]] QString applicationObjectPath();

/// One instance per session bus, on a separate connection. Logs to "burnwick.instance".
class BusApplicationInstance final : public QObject, public ApplicationInstance {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.Application")

public:
    /// `claimLimit` is for the bus's reply.
    explicit BusApplicationInstance(std::chrono::milliseconds claimLimit = std::chrono::seconds(2));
    ~BusApplicationInstance() override;

    void claim(const ApplicationRequest &request, std::function<void(InstanceClaim outcome)> answer) override;
    void setRequestHandler(RequestHandler handler) override;

public Q_SLOTS:
    // Named by the protocol. Burnwick opens no files, and its actions take no parameters.
    Q_SCRIPTABLE void Activate(const QVariantMap &platformData);
    Q_SCRIPTABLE void Open(const QStringList &uris, const QVariantMap &platformData);
    Q_SCRIPTABLE void ActivateAction(const QString &name, const QVariantList &parameter,
                                     const QVariantMap &platformData);

private:
    void requestName();
    void handOver();
    void handOverFailed(const QDBusMessage &error);
    void settle(InstanceClaim outcome);
    void receive(const ApplicationRequest &request);

    std::chrono::milliseconds m_claimLimit;
    QString m_connectionName;
    QDBusConnection m_connection;
    RequestHandler m_handler;
    std::vector<ApplicationRequest> m_early; ///< requests that came before the handler
    ApplicationRequest m_request;
    std::function<void(InstanceClaim outcome)> m_answer;
    int m_claimsLeft = 3;
};

} // namespace burnwick
