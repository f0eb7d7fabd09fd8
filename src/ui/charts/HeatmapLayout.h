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

/// A heatmap's sizes in logical pixels.
struct HeatmapMeasures {
    int cellSize;
    int gap; ///< between cells, in both directions
    int weeks;
};

/// 0 for a day without tokens; otherwise 1 to 4 for up to 25 %, 50 %, 75 % and 100 % of `most`.
[[nodiscard]] int heatLevel(std::int64_t count, std::int64_t most);

/// A grid of days in columns of seven, below the names of the months. The columns are not calendar weeks: the
/// last ends with today.
struct HeatmapLayout {
    struct Cell {
        LocalDay day;
        std::int64_t count; ///< tokens
        int level;          ///< as heatLevel() returns
        QRect rect;
    };
    struct Month {
        QString name;
        QRectF rect; ///< above the column with the month's first day, as wide as the name
    };

    HeatmapMeasures measures;
    std::vector<Cell> cells; ///< column by column, each from top to bottom: from the oldest day to today
    std::vector<Month> months;

    /// The cell at that point; each gap belongs to an adjacent cell.
    [[nodiscard]] std::optional<std::size_t> cellAt(QPointF point) const;
    /// The cell with its gaps.
    [[nodiscard]] QRect zoneOf(std::size_t cell) const;
};

/// The whole size.
[[nodiscard]] QSize heatmapSize(const HeatmapMeasures &measures);

[[nodiscard]] HeatmapLayout layoutHeatmap(const DailyActivity &activity, LocalDay today,
                                          const HeatmapMeasures &measures, const QFontMetricsF &font);

} // namespace burnwick
