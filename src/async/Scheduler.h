// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <chrono>
#include <functional>
#include <memory>

namespace burnwick {

/// A running timer; it ends with the object.
class RepeatingTimer {
public:
    virtual ~RepeatingTimer() = default;
};

/// Makes timers. Main thread only.
class Scheduler {
public:
    virtual ~Scheduler() = default;
    /// Calls back on the main thread once in every interval, first after one interval.
    [[nodiscard]] virtual std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                                 std::function<void()> callback) = 0;
};

/// Timers of the event loop. Coarse ones: the system may wake up for several of them at once.
class EventLoopScheduler final : public Scheduler {
public:
    [[nodiscard]] std::unique_ptr<RepeatingTimer> repeat(std::chrono::milliseconds interval,
                                                         std::function<void()> callback) override;
};

} // namespace burnwick
