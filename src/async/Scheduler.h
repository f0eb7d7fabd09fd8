// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <vector>

namespace burnwick {

class Clock;

/// A running timer. Its destruction stops it, also within its callback.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
};

/// Makes timers. Main thread only.
class Scheduler {
public:
    virtual ~Scheduler() = default;
    /// Calls the callback on the main thread once per interval: first after one interval, and never early.
    [[nodiscard]] virtual std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                                 std::function<void()> callback) = 0;
};

/// Starts a timer that calls back once after the delay and is null by then. The variable must outlive the
/// timer.
void startOnce(std::unique_ptr<RepeatingTimer> &timer, Scheduler &scheduler, std::chrono::nanoseconds delay,
               std::function<void()> callback);

/// Timers of the event loop, which stop while the machine sleeps: each also has a due time by the wall clock.
class EventLoopScheduler final : public Scheduler {
public:
    /// The clock must outlive this object, which must outlive its timers.
    explicit EventLoopScheduler(const Clock &clock)
        : m_clock(clock) {}

    [[nodiscard]] std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                         std::function<void()> callback) override;
    /// Corrects the timers that are late by the wall clock: those that are due fire once, in the next turn of
    /// the event loop. Call it after the machine slept. Each timer that fires also calls it, for systems that
    /// do not announce sleep.
    void catchUp() const;

private:
    class Timer;

    const Clock &m_clock;
    std::vector<Timer *> m_timers;
};

} // namespace burnwick
