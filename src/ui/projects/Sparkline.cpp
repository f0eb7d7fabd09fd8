// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/Sparkline.h"

#include <algorithm>

namespace burnwick {

SparklineMeasures sparklineMeasures(TimeFilter filter) {
    switch (filter) {
    case TimeFilter::thirtyDays:
        return {.days = 30, .bar = 3, .gap = 1};
    case TimeFilter::sevenDays:
        return {.days = 7, .bar = 14, .gap = 4};
    case TimeFilter::all:
        break;
    }
    return {.days = 62, .bar = 1, .gap = 1};
}

std::vector<QRectF> layoutSparkline(std::span<const std::int64_t> counts, const SparklineMeasures &measures,
                                    const QRectF &area) {
    constexpr double lowest = 1;
    const std::int64_t most = counts.empty() ? 0 : *std::ranges::max_element(counts);
    std::vector<QRectF> bars;
    bars.reserve(counts.size());
    double x = area.left();
    for (const std::int64_t count : counts) {
        double height = 0;
        if (count > 0)
            height = std::max(lowest, static_cast<double>(count) / static_cast<double>(most) * area.height());
        bars.emplace_back(x, area.bottom() - height, measures.bar, height);
        x += measures.bar + measures.gap;
    }
    return bars;
}

} // namespace burnwick
