// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/Sparkline.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>

namespace burnwick {

std::string sparkline(const std::map<LocalDay, std::int64_t> &activity, LocalDay today, int days) {
    constexpr std::array<std::string_view, 8> bars{"▁", "▂", "▃", "▄", "▅", "▆", "▇", "█"};
    const LocalDay first = today - std::chrono::days(days - 1);
    std::int64_t highest = 0;
    for (auto day = activity.lower_bound(first); day != activity.upper_bound(today); ++day)
        highest = std::max(highest, day->second);
    if (highest <= 0)
        return {};

    std::string line;
    for (LocalDay day = first; day <= today; day += std::chrono::days(1)) {
        const auto found = activity.find(day);
        if (found == activity.end() || found->second <= 0) {
            line += "·";
            continue;
        }
        const double share = static_cast<double>(found->second) / static_cast<double>(highest);
        line += bars[static_cast<std::size_t>(std::ceil(share * bars.size())) - 1];
    }
    return line;
}

} // namespace burnwick
