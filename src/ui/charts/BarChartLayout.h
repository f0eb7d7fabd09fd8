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

/// Three or four values from 0 on, evenly apart, whose texts are exact and of which the last one is the
/// highest or more; only 0 where nothing is counted.
[[nodiscard]] std::vector<double> guideValues(std::int64_t highest);

/// A bar for each day, with an axis of counts on the left and one of dates below. Nothing but places and
/// values, in logical pixels.
struct BarChartLayout {
    struct GuideLine {
        double y;
        QString label;
        QRectF labelRect;
    };
    struct Bar {
        LocalDay day;
        std::int64_t count; ///< tokens
        QRectF rect;        ///< stands on the plot's lower edge; without height when nothing is counted
    };
    struct DateLabel {
        QString text;
        QRectF rect; ///< centred under its bar
    };

    QRectF plot; ///< what the guide lines cross
    std::vector<GuideLine> guideLines;
    std::vector<Bar> bars; ///< from the oldest day to today
    std::vector<DateLabel> dates;
    double slotWidth = 0; ///< from one bar's middle to the next one's

    /// The part of the plot that belongs to the bar, from its upper to its lower edge.
    [[nodiscard]] QRectF slotOf(std::size_t bar) const;
    /// The bar to which that point of the plot belongs.
    [[nodiscard]] std::optional<std::size_t> barAt(QPointF point) const;
};

/// Begins with the earliest active day, 89 days before today at the earliest; there too without any.
[[nodiscard]] BarChartLayout layoutBarChart(const DailyActivity &activity, LocalDay today, QSizeF size,
                                            const QFontMetricsF &font);

} // namespace burnwick
