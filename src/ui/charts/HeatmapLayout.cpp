// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/HeatmapLayout.h"

#include <QFontMetricsF>

#include <algorithm>
#include <cmath>

namespace burnwick {

namespace {

constexpr int daysPerColumn = 7;
constexpr int monthLineHeight = 14;
constexpr int monthLineGap = 4;
constexpr int gridTop = monthLineHeight + monthLineGap;

QString monthName(LocalDay firstOfMonth) {
    return dayText(firstOfMonth).section(QLatin1Char(' '), 0, 0);
}

bool isFirstOfMonth(LocalDay day) {
    return std::chrono::year_month_day(day).day() == std::chrono::day(1);
}

std::int64_t mostOf(const DailyActivity &activity) {
    std::int64_t most = 1;
    for (const auto &[day, count] : activity)
        most = std::max(most, count);
    return most;
}

} // namespace

int heatLevel(std::int64_t count, std::int64_t most) {
    if (count <= 0)
        return 0;
    const double ratio = static_cast<double>(count) / static_cast<double>(most);
    if (ratio > 0.75)
        return 4;
    if (ratio > 0.5)
        return 3;
    return ratio > 0.25 ? 2 : 1;
}

QSize heatmapSize(const HeatmapMeasures &measures) {
    const int pitch = measures.cellSize + measures.gap;
    return {measures.weeks * pitch - measures.gap, gridTop + daysPerColumn * pitch - measures.gap};
}

HeatmapLayout layoutHeatmap(const DailyActivity &activity, LocalDay today, const HeatmapMeasures &measures,
                            const QFontMetricsF &font) {
    HeatmapLayout layout{measures, {}, {}};
    const int pitch = measures.cellSize + measures.gap;
    const int cellCount = measures.weeks * daysPerColumn;
    const int gridWidth = heatmapSize(measures).width();
    const std::int64_t most = mostOf(activity);
    layout.cells.reserve(static_cast<std::size_t>(cellCount));
    for (int i = 0; i < cellCount; ++i) {
        const LocalDay day = today - std::chrono::days(cellCount - 1 - i);
        const auto found = activity.find(day);
        const std::int64_t count = found == activity.end() ? 0 : found->second;
        const QRect rect(i / daysPerColumn * pitch, gridTop + i % daysPerColumn * pitch, measures.cellSize,
                         measures.cellSize);
        layout.cells.push_back({day, count, heatLevel(count, most), rect});
        if (!isFirstOfMonth(day))
            continue;
        const QString name = monthName(day);
        const double width = font.horizontalAdvance(name);
        // The name of a month that began in the last column would exceed the grid.
        const double left = std::min<double>(rect.left(), gridWidth - std::ceil(width));
        layout.months.push_back({name, {left, 0, width, monthLineHeight}});
    }
    return layout;
}

QRect HeatmapLayout::zoneOf(std::size_t cell) const {
    const int before = measures.gap / 2;
    const int after = measures.gap - before;
    return cells[cell].rect.adjusted(-before, -before, after, after);
}

std::optional<std::size_t> HeatmapLayout::cellAt(QPointF point) const {
    if (cells.empty())
        return std::nullopt;
    const int pitch = measures.cellSize + measures.gap;
    const QPoint origin = zoneOf(0).topLeft();
    const double column = std::floor((point.x() - origin.x()) / pitch);
    const double row = std::floor((point.y() - origin.y()) / pitch);
    if (column < 0 || column >= measures.weeks || row < 0 || row >= daysPerColumn)
        return std::nullopt;
    return static_cast<std::size_t>(column) * daysPerColumn + static_cast<std::size_t>(row);
}

} // namespace burnwick
