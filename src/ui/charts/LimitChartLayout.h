// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/LimitText.h"
#include "forecast/Forecast.h"
#include "model/Calendar.h"

#include <QFont>
#include <QLineF>
#include <QPolygonF>
#include <QRectF>
#include <QString>

#include <cstddef>
#include <optional>
#include <vector>

namespace burnwick {

/// Where a chart's plot begins below the chart's top, so that texts beside it can align with its highest
/// line.
inline constexpr double limitPlotTop = 15;

/// The window of a limit: percents on the left axis, times on the lower one, in logical pixels.
struct LimitChartLayout {
    struct GuideLine {
        enum class Kind { faint, threshold, full };
        double y;
        Kind kind;
        QString label;
        QRectF labelRect;
    };
    /// A time: a vertical line and a text below or above the plot.
    struct Mark {
        double x;
        QString label; ///< empty if it would overlap another one
        QRectF labelRect;
    };
    /// What the chart shows at a time.
    struct Reading {
        QPointF point;
        QString text; ///< such as "12:20: 58%"
    };

    Limit::Kind kind = Limit::Kind::session;
    Instant start{};                    ///< of the window
    std::chrono::nanoseconds length{0}; ///< 0 without a window
    std::optional<Calendar> calendar;   ///< absent without a window

    QRectF plot; ///< from 0 to 100 %, from the window's start to its reset
    std::vector<GuideLine> guideLines;
    std::vector<Mark> ticks; ///< full hours, or midnights in windows of seven days
    LimitWords::Tone tone = LimitWords::Tone::calm;

    /// What was measured, without gaps of more than a quarter of an hour, which lie between two of them.
    std::vector<QPolygonF> measured;
    std::optional<QLineF> evenPace;
    QPolygonF band;                 ///< empty without a forecast, or if the limit is full
    std::optional<QLineF> forecast; ///< to the reset, or to 100 %
    std::optional<Mark> now;
    std::optional<Mark> full; ///< before the reset
    QRectF wait;              ///< the part of the plot in which the limit is full
    Mark waitLabel;           ///< in that part

    /// The number of times that can be read; they have equal distances.
    [[nodiscard]] std::size_t stepCount() const;
    [[nodiscard]] double xOf(std::size_t step) const;
    /// The step next to the point, if the chart shows a percent there.
    [[nodiscard]] std::optional<std::size_t> stepAt(QPointF point) const;
    /// Null where the chart shows no percent: before the first sample and after the present without a
    /// forecast.
    [[nodiscard]] std::optional<Reading> readingAt(std::size_t step) const;
};

struct LimitChartFonts {
    QFont axis; ///< percents and ticks
    QFont mark; ///< above the plot
    QFont note; ///< in the part in which the limit is full
};

/// Lays out a chart. It has no curves after the reset, and only percents without a plausible reset.
[[nodiscard]] LimitChartLayout layoutLimitChart(const LimitCourse &course, const Forecast &forecast,
                                                const Calendar &calendar, Instant now, QSizeF size,
                                                const LimitChartFonts &fonts);

/// Returns the share of the window that is over, in percent: the use at an even pace. Null without a
/// plausible window and after its reset.
[[nodiscard]] std::optional<double> evenPaceOf(const Limit &limit, Instant now);

} // namespace burnwick
