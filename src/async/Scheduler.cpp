// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "async/Scheduler.h"

#include "model/Clock.h"

#include <QTimer>

#include <algorithm>
#include <utility>

namespace burnwick {

void startOnce(std::unique_ptr<RepeatingTimer> &timer, Scheduler &scheduler, std::chrono::nanoseconds delay,
               std::function<void()> callback) {
    const auto interval = std::chrono::ceil<std::chrono::milliseconds>(delay);
    timer = scheduler.repeat(interval, [&timer, callback = std::move(callback)] {
        const auto ended = std::move(timer);
        callback();
    });
}

class EventLoopScheduler::Timer final : public RepeatingTimer {
public:
    Timer(EventLoopScheduler &scheduler, std::chrono::milliseconds interval, std::function<void()> callback)
        : m_scheduler(scheduler)
        , m_interval(interval)
        , m_timer(new QTimer) {
        // The coarse types may fire early.
        m_timer->setTimerType(Qt::PreciseTimer);
        QObject::connect(m_timer, &QTimer::timeout, m_timer, [this, callback = std::move(callback)] {
            begin();
            m_scheduler.catchUp();
            callback(); // may destroy this timer
        });
        begin();
        m_scheduler.m_timers.push_back(this);
    }
    ~Timer() override {
        std::erase(m_scheduler.m_timers, this);
        // Deferred, because its own callback may destroy it.
        m_timer->stop();
        m_timer->deleteLater();
    }
    Timer(const Timer &) = delete;
    Timer &operator=(const Timer &) = delete;

    void catchUp(Instant now) const {
        const auto remaining =
            std::max(std::chrono::ceil<std::chrono::milliseconds>(m_due - now), std::chrono::milliseconds(0));
        // Two readings of the clock differ by less.
        constexpr std::chrono::seconds noticeable{1};
        if (remaining + noticeable < m_timer->remainingTimeAsDuration())
            m_timer->start(remaining);
    }

private:
    /// Starts the next interval. Restarts the timer only after a correction, so that intervals do not drift.
    void begin() {
        m_due = m_scheduler.m_clock.now() + m_interval;
        if (!m_timer->isActive() || m_timer->intervalAsDuration() != m_interval)
            m_timer->start(m_interval);
    }

    EventLoopScheduler &m_scheduler;
    const std::chrono::milliseconds m_interval;
    QTimer *m_timer;
    Instant m_due; ///< by the wall clock
};

std::unique_ptr<RepeatingTimer> EventLoopScheduler::repeat(std::chrono::milliseconds interval,
                                                           std::function<void()> callback) {
    return std::make_unique<Timer>(*this, interval, std::move(callback));
}

void EventLoopScheduler::catchUp() const {
    const Instant now = m_clock.now();
    for (const Timer *timer : m_timers)
        timer->catchUp(now);
}

} // namespace burnwick
