// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/BarChartLayout.h"

#include "display/DisplayFormat.h"
#include "ui/text/Text.h"

#include <QFontMetricsF>

#include <algorithm>
#include <array>
#include <cmath>

namespace burnwick {

namespace {

constexpr int longestSpan = 89; // days before today
constexpr double axisGap = 8;   // between the counts and the plot
constexpr double datesGap = 6;  // between the plot and the dates
constexpr double barShare = 0.72;
constexpr double widestBar = 28;
constexpr double lowestBar = 2; // so that a few tokens are visible
constexpr double dateCount = 7;
constexpr double dateSpacing = 12; // the least between dates

bool isExactOnAxis(double count) {
    if (count < 1e3)
        return std::fmod(count, 1) == 0;
    return std::fmod(count, count < 1e6 ? 1e3 : 1e5) == 0;
}

int spanOf(const DailyActivity &activity, LocalDay today) {
    if (activity.empty() || activity.begin()->first > today)
        return longestSpan;
    return static_cast<int>(
        std::min((today - activity.begin()->first).count(), std::chrono::days(longestSpan).count()));
}

std::vector<BarChartLayout::Bar> barsOf(const DailyActivity &activity, LocalDay today) {
    std::vector<BarChartLayout::Bar> bars;
    for (int daysAgo = spanOf(activity, today); daysAgo >= 0; --daysAgo) {
        const LocalDay day = today - std::chrono::days(daysAgo);
        const auto found = activity.find(day);
        bars.push_back({day, found == activity.end() ? 0 : std::max<std::int64_t>(found->second, 0), {}});
    }
    return bars;
}

void placeGuideLines(BarChartLayout &layout, const std::vector<double> &values, double lineHeight) {
    for (const double value : values) {
        const double share = value > 0 ? value / values.back() : 0;
        const double y = layout.plot.bottom() - share * layout.plot.height();
        layout.guideLines.push_back(
            {y, axisCountText(value), {0, y - lineHeight / 2, layout.plot.left() - axisGap, lineHeight}});
    }
}

/// The room right of the last bar's slot for the bar's date, which is centred under the bar.
double insetForLastDate(double plotWidth, std::size_t barCount, double dateWidth) {
    const double halfSlots = 1 / (2 * static_cast<double>(barCount));
    const double inset = (dateWidth / 2 - plotWidth * halfSlots) / (1 - halfSlots);
    return std::clamp(inset, 0.0, plotWidth);
}

void placeBars(BarChartLayout &layout, double highestGuide) {
    const double width = std::min(layout.slotWidth * barShare, widestBar);
    for (std::size_t i = 0; i < layout.bars.size(); ++i) {
        BarChartLayout::Bar &bar = layout.bars[i];
        double height = 0;
        if (bar.count > 0)
            height =
                std::max(lowestBar, static_cast<double>(bar.count) / highestGuide * layout.plot.height());
        bar.rect = {layout.slotOf(i).center().x() - width / 2, layout.plot.bottom() - height, width, height};
    }
}

void placeDates(BarChartLayout &layout, double widest, const QFontMetricsF &font) {
    if (layout.slotWidth <= 0)
        return;
    const auto count = static_cast<double>(layout.bars.size());
    const double apart =
        std::max(std::round(count / dateCount), std::ceil((widest + dateSpacing) / layout.slotWidth));
    const auto stride = static_cast<std::size_t>(std::clamp(apart, 1.0, std::max(1.0, count)));
    for (std::size_t left = layout.bars.size(); left > 0; left -= std::min(left, stride)) {
        const std::size_t i = left - 1;
        const QString text = dayText(layout.bars[i].day);
        const double width = font.horizontalAdvance(text);
        const double x = layout.slotOf(i).center().x() - width / 2;
        if (x >= 0)
            layout.dates.push_back({text, {x, layout.plot.bottom() + datesGap, width, font.height()}});
    }
}

} // namespace

QString axisCountText(double count) {
    if (count < 1e3)
        return textOf(fixedText(count, 0));
    if (count < 1e6)
        return textOf(fixedText(count / 1e3, 0)) + QLatin1Char('k');
    return textOf(fixedText(count / 1e6, 1)) + QLatin1Char('M');
}

std::vector<double> guideValues(std::int64_t highest) {
    if (highest <= 0)
        return {0};
    const auto needed = static_cast<double>(highest);
    // The lowest sufficient scale.
    for (double size = std::pow(10, std::floor(std::log10(needed)) - 1);; size *= 10) {
        constexpr std::array<std::pair<double, int>, 7> scales{
            {{1, 2}, {1, 3}, {2, 2}, {2, 3}, {2.5, 3}, {5, 2}, {5, 3}}};
        for (const auto &[step, count] : scales) {
            if (step * size * count < needed || !isExactOnAxis(step * size) ||
                !isExactOnAxis(step * size * count))
                continue;
            std::vector<double> values;
            for (int i = 0; i <= count; ++i)
                values.push_back(i * step * size);
            return values;
        }
    }
}

QRectF BarChartLayout::slotOf(std::size_t bar) const {
    return {plot.left() + static_cast<double>(bar) * slotWidth, plot.top(), slotWidth, plot.height()};
}

std::optional<std::size_t> BarChartLayout::barAt(QPointF point) const {
    if (slotWidth <= 0 || point.y() < plot.top() || point.y() > plot.bottom())
        return std::nullopt;
    const double at = std::floor((point.x() - plot.left()) / slotWidth);
    if (at < 0 || at >= static_cast<double>(bars.size()))
        return std::nullopt;
    return static_cast<std::size_t>(at);
}

BarChartLayout layoutBarChart(const DailyActivity &activity, LocalDay today, QSizeF size,
                              const QFontMetricsF &font) {
    BarChartLayout layout;
    layout.bars = barsOf(activity, today);
    std::int64_t highest = 0;
    double widestDate = 0;
    for (const BarChartLayout::Bar &bar : layout.bars) {
        highest = std::max(highest, bar.count);
        widestDate = std::max(widestDate, font.horizontalAdvance(dayText(bar.day)));
    }
    const std::vector<double> guides = guideValues(highest);
    double widestCount = 0;
    for (const double value : guides)
        widestCount = std::max(widestCount, font.horizontalAdvance(axisCountText(value)));

    const double left = std::ceil(widestCount) + axisGap;
    const double top = std::ceil(font.height() / 2);
    const double bottom = size.height() - std::ceil(font.height()) - datesGap;
    layout.plot = {left, top, std::max(0.0, size.width() - left), std::max(0.0, bottom - top)};
    const double inset = insetForLastDate(layout.plot.width(), layout.bars.size(), widestDate);
    layout.slotWidth = (layout.plot.width() - inset) / static_cast<double>(layout.bars.size());
    placeGuideLines(layout, guides, font.height());
    placeBars(layout, guides.back());
    placeDates(layout, widestDate, font);
    return layout;
}

} // namespace burnwick
