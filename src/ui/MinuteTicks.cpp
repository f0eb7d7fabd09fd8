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
    using namespace std::chrono;
    // A timer may be a little early; that must not make it fire twice for one minute.
    constexpr seconds tolerance{5};
    const Instant now = m_clock.now();
    const Instant next = floor<minutes>(now + tolerance) + minutes(1);
    m_timer = m_scheduler.repeat(ceil<milliseconds>(next - now), [this] {
        start();
        m_onMinute();
    });
}

void MinuteTicks::stop() {
    m_timer.reset();
}

} // namespace burnwick
