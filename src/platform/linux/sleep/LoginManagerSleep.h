// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/bus/ServiceOwner.h"

#include <QtCore/QObject>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <functional>
#include <optional>

namespace burnwick {

/// Listens to org.freedesktop.login1 on the system bus. Connects without blocking, and only once: where the
/// bus is missing or silent, it never calls the handler. Main thread only.
class LoginManagerSleep final : public QObject {
    Q_OBJECT

public:
    /// Calls the handler on the main thread after each sleep, no longer than this object lives.
    explicit LoginManagerSleep(std::function<void()> onWake);

private Q_SLOTS:
    void onPrepareForSleep(const QDBusMessage &message);

private:
    void listenOn(QDBusConnection bus);

    std::function<void()> m_onWake;
    std::optional<ServiceOwner> m_owner; ///< of the login manager's name
};

} // namespace burnwick
