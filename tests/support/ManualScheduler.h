// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "async/Scheduler.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace burnwick::test {

/// Timers that fire only in fire() and advance().
class ManualScheduler final : public Scheduler {
public:
    [[nodiscard]] std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                         std::function<void()> callback) override {
        auto timer = std::make_unique<Timer>(*this, interval, std::move(callback));
        m_timers.push_back(timer.get());
        return timer;
    }

    /// Returns the intervals of the running timers, in the order of their starts.
    [[nodiscard]] std::vector<std::chrono::milliseconds> intervals() const {
        std::vector<std::chrono::milliseconds> result;
        for (const Timer *timer : m_timers)
            result.push_back(timer->interval);
        return result;
    }

    /// Fires once each running timer with that interval. A callback may end any of them.
    void fire(std::chrono::milliseconds interval) const {
        const std::vector<Timer *> running = m_timers;
        for (Timer *timer : running) {
            if (isRunning(timer) && timer->interval == interval)
                timer->fire();
        }
    }

    /// Advances the running timers by that time. They fire one after the other, each as often as it is due. A
    /// callback may end any of them.
    void advance(std::chrono::milliseconds by) const {
        const std::vector<Timer *> running = m_timers;
        for (Timer *timer : running) {
            if (isRunning(timer))
                timer->elapsed += by;
            while (isRunning(timer) && timer->elapsed >= timer->interval) {
                timer->elapsed -= timer->interval;
                timer->fire();
            }
        }
    }

private:
    struct Timer final : RepeatingTimer {
        Timer(ManualScheduler &owner, std::chrono::milliseconds every, std::function<void()> onFire)
            : scheduler(owner)
            , interval(every)
            , callback(std::move(onFire)) {}
        ~Timer() override { std::erase(scheduler.m_timers, this); }
        Timer(const Timer &) = delete;
        Timer &operator=(const Timer &) = delete;

        void fire() const {
            const auto copy = callback; // which may destroy the timer
            copy();
        }

        ManualScheduler &scheduler;
        std::chrono::milliseconds interval;
        std::chrono::milliseconds elapsed{0};
        std::function<void()> callback;
    };

    [[nodiscard]] bool isRunning(const Timer *timer) const {
        return std::find(m_timers.begin(), m_timers.end(), timer) != m_timers.end();
    }

    std::vector<Timer *> m_timers;
};

} // namespace burnwick::test
