// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/sleep/LinuxSleepMonitor.h"

#include "platform/Platform.h"

#include <cstdint>
#include <limits>
#include <utility>

#include <sys/timerfd.h>
#include <unistd.h>

namespace burnwick {

LinuxSleepMonitor::LinuxSleepMonitor()
    : m_timer(timerfd_create(CLOCK_REALTIME, TFD_NONBLOCK | TFD_CLOEXEC)) {}

LinuxSleepMonitor::~LinuxSleepMonitor() {
    m_cancelled.reset();
    if (m_timer != -1)
        close(m_timer);
}

void LinuxSleepMonitor::follow(std::function<void()> onWake) {
    m_onWake = std::move(onWake);
    m_loginManager.emplace([this] { m_onWake(); });
    itimerspec never{};
    never.it_value.tv_sec = std::numeric_limits<time_t>::max();
    if (m_timer == -1 ||
        timerfd_settime(m_timer, TFD_TIMER_ABSTIME | TFD_TIMER_CANCEL_ON_SET, &never, nullptr) == -1)
        return;
    m_cancelled.emplace(m_timer, QSocketNotifier::Read);
    QObject::connect(&*m_cancelled, &QSocketNotifier::activated, &*m_cancelled,
                     [this] { takeClockChange(); });
}

/// Reading rearms the timer; it fails with ECANCELED.
void LinuxSleepMonitor::takeClockChange() const {
    std::uint64_t expirations = 0;
    static_cast<void>(!read(m_timer, &expirations, sizeof expirations));
    m_onWake();
}

std::unique_ptr<SleepMonitor> platform::makeSleepMonitor() {
    return std::make_unique<LinuxSleepMonitor>();
}

} // namespace burnwick
