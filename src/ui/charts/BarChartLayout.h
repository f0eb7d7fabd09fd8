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

/// "999", "20k", "1.5M"
[[nodiscard]] QString axisCountText(double count);

/// Three or four values from 0 to at least `highest`, at equal distances, with exact texts; {0} when
/// `highest` is 0.
[[nodiscard]] std::vector<double> guideValues(std::int64_t highest);

/// A bar for each day, an axis of counts on the left and an axis of dates below, in logical pixels.
struct BarChartLayout {
    struct GuideLine {
        double y;
        QString label;
        QRectF labelRect;
    };
    struct Bar {
        LocalDay day;
        std::int64_t count; ///< tokens
        QRectF rect;        ///< on the plot's lower edge; 0 high for a count of 0
    };
    struct DateLabel {
        QString text;
        QRectF rect; ///< centred under its bar
    };

    QRectF plot; ///< the area of guide lines and bars
    std::vector<GuideLine> guideLines;
    std::vector<Bar> bars; ///< from the oldest day to today
    std::vector<DateLabel> dates;
    double slotWidth = 0; ///< the distance between the centres of two bars

    /// The bar's part of the plot, in full height.
    [[nodiscard]] QRectF slotOf(std::size_t bar) const;
    /// The bar whose slot contains the point.
    [[nodiscard]] std::optional<std::size_t> barAt(QPointF point) const;
};

/// Starts at the earliest active day, at most 89 days before today; without active days 89 days before today.
[[nodiscard]] BarChartLayout layoutBarChart(const DailyActivity &activity, LocalDay today, QSizeF size,
                                            const QFontMetricsF &font);

} // namespace burnwick
