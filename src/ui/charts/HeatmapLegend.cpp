// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/HeatmapLegend.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/layout/PixelGrid.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QEvent>
#include <QPainter>

namespace burnwick {

namespace {

constexpr int levels = 5;
constexpr int cellSize = 9;
constexpr int gap = 3;
constexpr int textGap = 5;
constexpr int cellsWidth = levels * (cellSize + gap) - gap;

const QString less = QStringLiteral("Less");
const QString more = QStringLiteral("More");

} // namespace

void drawHeatCell(QPainter &painter, const QRectF &cell, int level, const ThemeColors &colors) {
    constexpr double radius = 2.5;
    fillRounded(painter, cell, radius,
                level == 0 ? colors.emptyCell : colors.heat.at(static_cast<std::size_t>(level) - 1));
}

HeatmapLegend::HeatmapLegend() {
    setFont(fontOf(TextStyle::small));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleRole(*this, QAccessible::StaticText);
    setAccessibleName(QStringLiteral("Colours from less to more activity"));
}

QSize HeatmapLegend::sizeHint() const {
    const QFontMetrics font = fontMetrics();
    return {font.horizontalAdvance(less) + font.horizontalAdvance(more) + cellsWidth + 2 * textGap,
            std::max(font.height(), cellSize)};
}

void HeatmapLegend::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

void HeatmapLegend::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = colorsFor(*this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(colors.secondary);
    painter.drawText(rect(), Qt::AlignLeft | Qt::AlignVCenter, less);
    painter.drawText(rect(), Qt::AlignRight | Qt::AlignVCenter, more);

    const PixelGrid grid(painter);
    QRectF cell(fontMetrics().horizontalAdvance(less) + textGap, (height() - cellSize) / 2.0, cellSize,
                cellSize);
    for (int level = 0; level < levels; ++level) {
        drawHeatCell(painter, grid.rect(cell), level, colors);
        cell.translate(cellSize + gap, 0);
    }
}

} // namespace burnwick
