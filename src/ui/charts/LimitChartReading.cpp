// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT

// What a limit chart shows at a time.

#include "display/DisplayFormat.h"
#include "ui/charts/LimitChartLayout.h"
#include "ui/text/Text.h"

#include <algorithm>
#include <cmath>

namespace burnwick {

namespace {

using std::chrono::minutes;

/// The percent's place on the line from left to right at x.
QPointF pointOn(const QPointF &from, const QPointF &to, double x) {
    const double share = to.x() > from.x() ? (x - from.x()) / (to.x() - from.x()) : 1;
    return {x, from.y() + (to.y() - from.y()) * share};
}

} // namespace

std::size_t LimitChartLayout::stepCount() const {
    const minutes step(kind == Limit::Kind::session ? 1 : 15);
    return length.count() > 0 ? static_cast<std::size_t>(length / step) + 1 : 0;
}

double LimitChartLayout::xOf(std::size_t step) const {
    if (stepCount() == 0)
        return plot.left();
    return plot.left() + plot.width() * static_cast<double>(step) / static_cast<double>(stepCount() - 1);
}

std::optional<std::size_t> LimitChartLayout::stepAt(QPointF point) const {
    constexpr double slack = 4; // beside the plot, for its ends
    if (stepCount() == 0 || !plot.adjusted(-slack, -slack, slack, slack).contains(point))
        return std::nullopt;
    const double share = std::clamp((point.x() - plot.left()) / plot.width(), 0.0, 1.0);
    const auto step = static_cast<std::size_t>(std::lround(share * static_cast<double>(stepCount() - 1)));
    return readingAt(step) ? std::optional(step) : std::nullopt;
}

std::optional<LimitChartLayout::Reading> LimitChartLayout::readingAt(std::size_t step) const {
    if (step >= stepCount() || measured.empty())
        return std::nullopt;
    const double x = xOf(step);
    const auto reading = [&](const QPointF &point, bool isExact) {
        const Instant at =
            start + length / static_cast<std::int64_t>(stepCount() - 1) * static_cast<std::int64_t>(step);
        const double percent = 100 * (plot.bottom() - point.y()) / plot.height();
        return Reading{point, textOf(limitTimeText(kind, at, *calendar)) +
                                  (isExact ? QLatin1String(": ") : QLatin1String(": about ")) +
                                  textOf(percentText(percent))};
    };
    constexpr double roundingError = 1; // of the step, in pixels
    if (x < measured.front().front().x() - roundingError)
        return std::nullopt;
    const QPointF *before = nullptr; // the end of the run before the gap
    for (const QPolygonF &run : measured) {
        if (x < run.front().x() && before != nullptr)
            return reading(pointOn(*before, run.front(), x), false);
        if (x <= run.back().x() + (&run == &measured.back() ? roundingError : 0)) {
            const auto next =
                std::lower_bound(run.begin(), run.end(), x,
                                 [](const QPointF &point, double value) { return point.x() < value; });
            if (next == run.begin() || next == run.end())
                return reading({x, (next == run.end() ? run.back() : *next).y()}, true);
            return reading(pointOn(*(next - 1), *next, x), true);
        }
        before = &run.back();
    }
    if (!wait.isEmpty() && x >= wait.left())
        return reading({x, plot.top()}, !forecast);
    if (!forecast || x > forecast->x2() + roundingError)
        return std::nullopt;
    return reading(pointOn(forecast->p1(), forecast->p2(), x), false);
}

} // namespace burnwick
