// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/ApplicationInstance.h"
#include "platform/linux/instance/ApplicationObject.h"

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusError>

#include <chrono>
#include <vector>

namespace burnwick {

/// "com.burnwick.Burnwick": the name whose owner is the instance that runs.
///
/// The desktop file is burnwick.desktop, like the icon, the window class and the status item. A desktop file
/// that is to be started over the bus (DBusActivatable) would have to be named after the bus name, which
/// needs a dot. Burnwick is started by its Exec key instead; a second start passes the desktop's data on, so
/// that nothing is lost by it.
[[nodiscard]] QString applicationBusName();
/// Where the owner of the name exports org.freedesktop.Application.
[[nodiscard]] QString applicationObjectPath();

/// One instance per session bus, on a connection of its own. Logs to "burnwick.instance".
class BusApplicationInstance final : public ApplicationInstance {
public:
    struct Limits {
        std::chrono::milliseconds claim{2'000}; ///< until the bus must have answered
        /// Until the other instance must have answered; it may be in its first load of the logs.
        std::chrono::milliseconds handOver{5'000};
    };

    BusApplicationInstance()
        : BusApplicationInstance(Limits{}) {}
    explicit BusApplicationInstance(const Limits &limits);
    ~BusApplicationInstance() override;

    void claim(const ApplicationRequest &request, std::function<void(InstanceClaim outcome)> answer) override;
    void setRequestHandler(RequestHandler handler) override;

private:
    void requestName();
    void handOver();
    void handOverFailed(const QDBusError &error);
    void settle(InstanceClaim outcome);
    void receive(const ApplicationRequest &request);

    Limits m_limits;
    QString m_connectionName;
    QDBusConnection m_connection;
    ApplicationObject m_object;
    RequestHandler m_handler;
    std::vector<ApplicationRequest> m_early; ///< what came before there was a handler
    ApplicationRequest m_request;
    std::function<void(InstanceClaim outcome)> m_answer;
    int m_claimsLeft;
    QObject m_context; ///< ends what is under way; last, so that it goes first
};

} // namespace burnwick
