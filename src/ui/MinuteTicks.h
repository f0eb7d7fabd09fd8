// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <functional>
#include <memory>

namespace burnwick {

class Clock;
class RepeatingTimer;
class Scheduler;

/// Calls back at each full minute of the wall clock, never before it. Main thread only.
class MinuteTicks final {
public:
    /// Stopped at first. Clock and scheduler must outlive this object.
    MinuteTicks(const Clock &clock, Scheduler &scheduler, std::function<void()> onMinute);
    ~MinuteTicks();
    MinuteTicks(const MinuteTicks &) = delete;
    MinuteTicks &operator=(const MinuteTicks &) = delete;

    void start();
    void stop();

private:
    void waitFor(Instant minute);

    const Clock &m_clock;
    Scheduler &m_scheduler;
    std::function<void()> m_onMinute;
    std::unique_ptr<RepeatingTimer> m_timer;
};

} // namespace burnwick
