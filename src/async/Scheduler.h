// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace burnwick {

class Clock;

/// A running timer; it ends with the object.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
};

/// Makes timers. Main thread only.
class Scheduler {
public:
    virtual ~Scheduler() = default;
    /// Calls back on the main thread once in every interval, first after one interval, never
    /// before it is over.
    [[nodiscard]] virtual std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                                 std::function<void()> callback) = 0;
};

/// Timers of the event loop. These stop while the machine sleeps, so that each also has an instant of the
/// wall clock at which it is due.
class EventLoopScheduler final : public Scheduler {
public:
    /// The clock must outlive this object, which must outlive its timers.
    explicit EventLoopScheduler(const Clock &clock)
        : m_clock(clock) {}

    [[nodiscard]] std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                         std::function<void()> callback) override;
    /// Brings the timers that are late by the wall clock forward to it: those that are due call back once, in
    /// the next turn of the event loop. After the machine slept; each timer that fires does it too, for
    /// systems that announce no sleep.
    void catchUp() const;

private:
    class Timer;

    const Clock &m_clock;
    std::vector<Timer *> m_timers;
};

} // namespace burnwick
