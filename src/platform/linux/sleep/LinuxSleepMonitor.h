// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SleepMonitor.h"
#include "platform/linux/bus/ServiceOwner.h"

#include <QtCore/QObject>
#include <QtCore/QSocketNotifier>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>

#include <optional>

namespace burnwick {

/// Sleep as the kernel and systemd's login manager announce it. The kernel cancels a timer that never expires
/// when the wall clock jumps against the monotonic one: after a sleep, and after the clock was set. The login
/// manager (org.freedesktop.login1) sends a signal on the system bus, which is not needed. Costs nothing in
/// between, and blocks for neither.
class LinuxSleepMonitor final : public QObject, public SleepMonitor {
    Q_OBJECT

public:
    LinuxSleepMonitor();
    ~LinuxSleepMonitor() override;

    void follow(std::function<void()> onWake) override;

private:
    void followTimer();
    void followLoginManager(QDBusConnection bus);

private Q_SLOTS:
    void onPrepareForSleep(const QDBusMessage &message);

private:
    int m_timer;
    std::optional<QSocketNotifier> m_cancelled;
    std::optional<ServiceOwner> m_loginManager;
    std::function<void()> m_onWake;
};

} // namespace burnwick
