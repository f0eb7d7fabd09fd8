// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "async/Scheduler.h"

#include <QTimer>

#include <utility>

namespace burnwick {

namespace {

class EventLoopTimer final : public RepeatingTimer {
public:
    EventLoopTimer(std::chrono::milliseconds interval, std::function<void()> callback)
        : m_timer(new QTimer) {
        m_timer->setTimerType(Qt::CoarseTimer);
        QObject::connect(m_timer, &QTimer::timeout, m_timer, std::move(callback));
        m_timer->start(interval);
    }
    ~EventLoopTimer() override {
        // Its own callback may be what ends it.
        m_timer->stop();
        m_timer->deleteLater();
    }
    EventLoopTimer(const EventLoopTimer &) = delete;
    EventLoopTimer &operator=(const EventLoopTimer &) = delete;

private:
    QTimer *m_timer;
};

} // namespace

std::unique_ptr<RepeatingTimer> EventLoopScheduler::repeat(std::chrono::milliseconds interval,
                                                           std::function<void()> callback) {
    return std::make_unique<EventLoopTimer>(interval, std::move(callback));
}

} // namespace burnwick
