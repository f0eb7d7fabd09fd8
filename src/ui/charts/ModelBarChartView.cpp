// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/ModelBarChartView.h"

#include "ui/layout/PixelGrid.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>

#include <algorithm>

namespace burnwick {

namespace {

constexpr QSize preferredSize(600, 164);
constexpr QSize smallestSize(240, 76);

void drawBar(QPainter &painter, const PixelGrid &grid, const QRectF &bar) {
    constexpr double largestRadius = 2;
    const double top = grid.y(bar.top());
    const QRectF sharp(grid.x(bar.left()), top, grid.length(bar.width()), grid.y(bar.bottom()) - top);
    const double radius = std::min({largestRadius, sharp.width() * 0.3, sharp.height() / 2});
    painter.drawRoundedRect(sharp, radius, radius);
}

/// The highlight behind a bar, which may have no height.
QRectF bandBehind(const BarChartLayout &layout, std::size_t bar, const PixelGrid &grid) {
    constexpr double margin = 6; // the most on each side of the bar
    const QRectF slot = layout.slotOf(bar);
    const double width = std::min(slot.width(), layout.bars[bar].rect.width() + 2 * margin);
    return {grid.x(slot.center().x() - width / 2), grid.y(slot.top()), grid.length(width), slot.height()};
}

void drawTexts(QPainter &painter, const BarChartLayout &layout) {
    for (const BarChartLayout::GuideLine &guide : layout.guideLines)
        painter.drawText(guide.labelRect, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, guide.label);
    for (const BarChartLayout::DateLabel &date : layout.dates)
        painter.drawText(date.rect, Qt::AlignHCenter | Qt::AlignTop | Qt::TextDontClip, date.text);
}

} // namespace

ModelBarChartView::ModelBarChartView() {
    setFont(fontOf(TextStyle::small));
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Preferred);
}

QSize ModelBarChartView::sizeHint() const {
    return preferredSize;
}

QSize ModelBarChartView::minimumSizeHint() const {
    return smallestSize;
}

void ModelBarChartView::setActivity(const DailyActivity &activity, LocalDay today) {
    if (m_today == today && m_activity == activity)
        return;
    m_activity = activity;
    m_today = today;
    layOut();
    const LocalDay first = m_layout.bars.front().day;
    setAccessibleName(QStringLiteral("Tokens per day since %1: %2")
                          .arg(dayText(first), activitySummary(m_activity, first, today)));
}

void ModelBarChartView::layOut() {
    if (!m_today)
        return;
    m_layout = layoutBarChart(m_activity, *m_today, size(), QFontMetricsF(font(), this));
    partsChanged();
}

std::optional<std::size_t> ModelBarChartView::partAt(QPointF point) const {
    return m_layout.barAt(point);
}

QRect ModelBarChartView::zoneOf(std::size_t part) const {
    return m_layout.slotOf(part).toAlignedRect();
}

QString ModelBarChartView::tipOf(std::size_t part) const {
    const BarChartLayout::Bar &bar = m_layout.bars[part];
    return dayText(bar.day) + QLatin1String(": ") + exactTokensText(bar.count);
}

void ModelBarChartView::resizeEvent(QResizeEvent *event) {
    PointableChart::resizeEvent(event);
    layOut();
}

void ModelBarChartView::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = colorsFor(*this);
    QPainter painter(this);
    const PixelGrid grid(painter);
    for (const BarChartLayout::GuideLine &guide : m_layout.guideLines)
        painter.fillRect(QRectF(m_layout.plot.left(), grid.y(guide.y), m_layout.plot.width(), grid.length(1)),
                         colors.line);
    if (const auto pointed = pointedPart())
        painter.fillRect(bandBehind(m_layout, *pointed, grid), colors.hover);

    painter.setPen(colors.secondary);
    drawTexts(painter, m_layout);

    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colors.accent);
    for (const BarChartLayout::Bar &bar : m_layout.bars) {
        if (bar.count > 0)
            drawBar(painter, grid, bar.rect);
    }
}

} // namespace burnwick
