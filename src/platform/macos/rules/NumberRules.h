// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/UserDefaults.h"

#include <cmath>
#include <limits>

namespace burnwick {

/// Returns a number of the user's defaults as its value: whole numbers that 64 bits can represent are
/// integers.
[[nodiscard]] inline UserDefaults::Value valueOf(double number) {
    // Exactly 2^63: the largest integer itself is not a double.
    constexpr double limit = -static_cast<double>(std::numeric_limits<qint64>::min());
    if (std::trunc(number) == number && number >= -limit && number < limit)
        return static_cast<qint64>(number);
    return number;
}

} // namespace burnwick
