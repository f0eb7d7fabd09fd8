// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/charts/DailyActivity.h"

#include <QPointF>
#include <QRectF>
#include <QString>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

class QFontMetricsF;

namespace burnwick {

/// How large a heatmap is drawn, in logical pixels.
struct HeatmapMeasures {
    int cellSize;
    int gap; ///< between cells, in both directions
    int weeks;
};

/// 0 for a day without tokens, then 1 to 4: up to a quarter, a half, three quarters of the most, and above.
[[nodiscard]] int heatLevel(std::int64_t count, std::int64_t most);

/// Days as a grid of columns of seven, which end with today and are no calendar weeks, below the names of the
/// months. Nothing but places and values.
struct HeatmapLayout {
    struct Cell {
        LocalDay day;
        std::int64_t count; ///< tokens
        int level;          ///< as heatLevel() gives
        QRect rect;
    };
    struct Month {
        QString name;
        QRectF rect; ///< above the column with the month's first day, and as wide as the name
    };

    HeatmapMeasures measures;
    std::vector<Cell> cells; ///< column by column, each from top to bottom: from the oldest day to today
    std::vector<Month> months;

    /// The cell at that point; the gaps belong to the cells beside them.
    [[nodiscard]] std::optional<std::size_t> cellAt(QPointF point) const;
    /// The cell and the gaps that belong to it.
    [[nodiscard]] QRect zoneOf(std::size_t cell) const;
};

/// Of the whole, which is the same for all days.
[[nodiscard]] QSize heatmapSize(const HeatmapMeasures &measures);

[[nodiscard]] HeatmapLayout layoutHeatmap(const DailyActivity &activity, LocalDay today,
                                          const HeatmapMeasures &measures, const QFontMetricsF &font);

} // namespace burnwick
