// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/TableParts.h"

#include <algorithm>
#include <cmath>

namespace burnwick {

std::string_view periodText(TimeFilter filter) noexcept {
    switch (filter) {
    case TimeFilter::thirtyDays:
        return "last 30 days";
    case TimeFilter::sevenDays:
        return "last 7 days";
    case TimeFilter::all:
        break;
    }
    return "all time";
}

std::string percentageBar(double percentage, int columns) {
    const int full = static_cast<int>(std::ceil(std::clamp(percentage, 0.0, 100.0) / 100 * columns));
    std::string bar;
    for (int column = 0; column < columns; ++column)
        bar += column < full ? "━" : " ";
    return bar;
}

} // namespace burnwick
