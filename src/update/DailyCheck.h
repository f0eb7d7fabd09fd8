// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Clock.h"
#include "platform/UserDefaults.h"

#include <chrono>

namespace burnwick {

/// Limits checks to one a day, also across restarts: the user defaults keep the time of the last one under
/// "lastUpdateCheck", in whole seconds since 1970. Uses the wall clock, which also counts while the machine
/// sleeps. Main thread only.
class DailyCheck final {
public:
    /// Both must outlive this object.
    DailyCheck(UserDefaults &defaults, const Clock &clock)
        : m_defaults(defaults)
        , m_clock(clock) {}

    /// Returns whether the last check is at least 24 hours ago. A last check in the future means that the
    /// clock was set back: replaces it by the current time and returns false.
    [[nodiscard]] bool isDue() {
        constexpr qint64 day = std::chrono::seconds(std::chrono::hours(24)).count();
        const auto last = m_defaults.get<qint64>(key);
        if (last && *last > now()) {
            record(now());
            return false;
        }
        // now() - *last could overflow.
        return !last || *last <= now() - day;
    }
    /// Returns the current time in whole seconds since 1970.
    [[nodiscard]] qint64 now() const {
        return std::chrono::floor<std::chrono::seconds>(m_clock.now()).time_since_epoch().count();
    }
    /// Stores a result of now() as the time of the last check.
    void record(qint64 time) { m_defaults.set(key, time); }

private:
    static constexpr QLatin1String key{"lastUpdateCheck"};

    UserDefaults &m_defaults;
    const Clock &m_clock;
};

} // namespace burnwick
