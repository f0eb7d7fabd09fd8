// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/SleepMonitor.h"
#include "platform/linux/sleep/LoginManagerSleep.h"

#include <QtCore/QSocketNotifier>

#include <optional>

namespace burnwick {

/// Sleep as the kernel and systemd's login manager announce it. Neither costs anything while the machine is
/// awake. The kernel is enough by itself; it also announces that the clock was set.
class LinuxSleepMonitor final : public SleepMonitor {
public:
    LinuxSleepMonitor();
    ~LinuxSleepMonitor() override;
    LinuxSleepMonitor(const LinuxSleepMonitor &) = delete;
    LinuxSleepMonitor &operator=(const LinuxSleepMonitor &) = delete;

    void follow(std::function<void()> onWake) override;

private:
    void takeClockChange() const;

    int m_timer; ///< never expires; cancelled whenever the wall clock jumps against the monotonic one
    std::optional<QSocketNotifier> m_cancelled;
    std::function<void()> m_onWake;
    std::optional<LoginManagerSleep> m_loginManager;
};

} // namespace burnwick
