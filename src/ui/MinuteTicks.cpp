// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/MinuteTicks.h"

#include "async/Scheduler.h"
#include "model/Clock.h"

#include <chrono>
#include <utility>

namespace burnwick {

MinuteTicks::MinuteTicks(const Clock &clock, Scheduler &scheduler, std::function<void()> onMinute)
    : m_clock(clock)
    , m_scheduler(scheduler)
    , m_onMinute(std::move(onMinute)) {}

MinuteTicks::~MinuteTicks() = default;

void MinuteTicks::start() {
    waitFor(std::chrono::floor<std::chrono::minutes>(m_clock.now()) + std::chrono::minutes(1));
}

void MinuteTicks::waitFor(Instant minute) {
    const auto remaining = std::chrono::ceil<std::chrono::milliseconds>(minute - m_clock.now());
    m_timer = m_scheduler.repeat(remaining, [this, minute] {
        // The wall clock may have been set back.
        const bool early = m_clock.now() < minute;
        start();
        if (!early)
            m_onMinute();
    });
}

void MinuteTicks::stop() {
    m_timer.reset();
}

} // namespace burnwick
