// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/ActivityHeatmapView.h"

#include "ui/charts/HeatmapLegend.h"
#include "ui/layout/PixelGrid.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QFontMetricsF>
#include <QPaintEvent>
#include <QPainter>
#include <QPixmap>

#include <map>

namespace burnwick {

namespace {

void drawOutline(QPainter &painter, const PixelGrid &grid, const QRectF &cell, const QColor &color) {
    constexpr double radius = 2.5;
    const double width = grid.length(1);
    painter.setPen(QPen(color, width));
    painter.setBrush(Qt::NoBrush);
    painter.drawRoundedRect(grid.rect(cell).adjusted(width / 2, width / 2, -width / 2, -width / 2), radius,
                            radius);
}

QPixmap pictureOfCell(QSizeF size, double scale, int level, const ThemeColors &colors) {
    QPixmap picture((size * scale).toSize());
    picture.setDevicePixelRatio(scale);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawHeatCell(painter, {{}, size}, level, colors);
    return picture;
}

} // namespace

ActivityHeatmapView::ActivityHeatmapView(const HeatmapMeasures &measures)
    : m_layout{measures, {}, {}} {
    setFont(fontOf(TextStyle::small));
    setFixedSize(heatmapSize(measures));
}

void ActivityHeatmapView::setActivity(const DailyActivity &activity, LocalDay today,
                                      std::optional<LocalDay> first) {
    if (m_today == today && m_first == first && m_activity == activity)
        return;
    m_activity = activity;
    m_first = first;
    m_today = today;
    layOut();
}

void ActivityHeatmapView::layOut() {
    if (!m_today)
        return;
    const HeatmapMeasures measures = m_layout.measures;
    m_layout = layoutHeatmap(m_activity, *m_today, measures, QFontMetricsF(font(), this));
    const QString period = m_first ? QLatin1String("since ") + dayText(*m_first)
                                   : QStringLiteral("of the last %1 weeks").arg(measures.weeks);
    setAccessibleName(QStringLiteral("Activity %1: %2")
                          .arg(period, activitySummary(m_activity, m_layout.cells.front().day, *m_today)));
    partsChanged();
}

std::optional<std::size_t> ActivityHeatmapView::partAt(QPointF point) const {
    return m_layout.cellAt(point);
}

QRect ActivityHeatmapView::zoneOf(std::size_t part) const {
    return m_layout.zoneOf(part);
}

QString ActivityHeatmapView::tipOf(std::size_t part) const {
    const HeatmapLayout::Cell &cell = m_layout.cells[part];
    const bool isBeforePeriod = m_first && cell.day < *m_first;
    return dayText(cell.day) + QLatin1String(": ") +
           (isBeforePeriod ? QStringLiteral("before the chosen period") : roundedTokensText(cell.count));
}

void ActivityHeatmapView::paintEvent(QPaintEvent *event) {
    const ThemeColors &colors = colorsFor(*this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colors.secondary);
    for (const HeatmapLayout::Month &month : m_layout.months)
        painter.drawText(month.rect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, month.name);

    const PixelGrid grid(painter);
    // Cells of a level are copies of one picture: rounded rectangles would take half of the window's
    // painting.
    std::map<int, QPixmap> pictures;
    for (std::size_t i = 0; i < m_layout.cells.size(); ++i) {
        const auto &[day, count, level, rect] = m_layout.cells[i];
        if (!event->rect().intersects(m_layout.zoneOf(i)))
            continue;
        const QRectF cell = grid.rect(rect);
        QPixmap &picture = pictures[level];
        if (picture.isNull())
            picture = pictureOfCell(cell.size(), painter.deviceTransform().m11(), level, colors);
        painter.drawPixmap(cell.topLeft(), picture);
    }
    if (const auto pointed = pointedPart())
        drawOutline(painter, grid, m_layout.cells[*pointed].rect, colors.text);
}

} // namespace burnwick
