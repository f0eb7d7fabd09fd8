// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forecast/Forecast.h"

#include <cstdint>
#include <vector>

namespace burnwick::bench {

/// One window of a simulated user, with what a forecast may know of it, and the truth.
struct SimulatedWindow {
    Instant start;
    LimitWindow window;
    std::vector<LimitSample> samples; ///< in order of time
    std::vector<TokenUse> tokens;     ///< in order of time, of the local logs alone
    std::vector<LimitSample> truth;   ///< after each message, unrounded; at most 100

    /// Returns the true percent at an instant of the window.
    [[nodiscard]] double percentAt(Instant instant) const;
};

enum class WindowLength { fiveHours, sevenDays };

/// Returns `count` windows, each of another user. The same seed gives the same windows on every machine.
[[nodiscard]] std::vector<SimulatedWindow> simulateWindows(WindowLength length, std::uint64_t seed,
                                                           std::size_t count);

} // namespace burnwick::bench
