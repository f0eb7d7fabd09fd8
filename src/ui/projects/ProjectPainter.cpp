// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/projects/ProjectPainter.h"

#include "display/DisplayFormat.h"
#include "display/PriceText.h"
#include "ui/charts/UsageBar.h"
#include "ui/controls/PriceMark.h"
#include "ui/layout/PixelGrid.h"
#include "ui/projects/ProjectText.h"
#include "ui/text/Text.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QFontMetricsF>
#include <QPainter>

#include <array>

namespace burnwick {

namespace {

constexpr std::array widths{194, 123, 116, 64, 58, 88};
static_assert(widths.size() == ProjectsModel::columns);
constexpr int gap = 17;

int widthOf(int column) {
    return widths[static_cast<std::size_t>(column)];
}

/// Draws the text, elided if it is too long.
void drawLine(QPainter &painter, const QRectF &area, TextStyle style, const QColor &color,
              const QString &text, Qt::Alignment alignment) {
    const QFont font = fontOf(style);
    painter.setFont(font);
    painter.setPen(color);
    painter.drawText(area, static_cast<int>(alignment | Qt::AlignVCenter) | Qt::TextSingleLine,
                     QFontMetricsF(font).elidedText(text, Qt::ElideMiddle, area.width()));
}

/// Returns the area's part of that height in its vertical centre.
QRectF centredIn(const QRectF &area, double height) {
    return {area.left(), area.center().y() - height / 2, area.width(), height};
}

} // namespace

QRectF projectColumnIn(const QRectF &row, int column) {
    double left = row.left() + projectsSidePadding;
    for (int i = 0; i < column; ++i)
        left += widthOf(i) + gap;
    return {left, row.top(), static_cast<double>(widthOf(column)), row.height()};
}

int projectSectionWidth(int column) {
    return widthOf(column) + (column == 0 ? projectsSidePadding : 0) +
           (column == ProjectsModel::columns - 1 ? projectsSidePadding : gap);
}

Qt::Alignment projectAlignment(int column) {
    return column <= ProjectsModel::tokensPerDay ? Qt::AlignLeft : Qt::AlignRight;
}

void drawProjectName(QPainter &painter, const QRectF &area, const QString &name, const QString &path,
                     bool isTotal, const ThemeColors &colors) {
    const TextStyle style = isTotal ? TextStyle::labelStrong : TextStyle::label;
    const double nameHeight = QFontMetricsF(fontOf(style)).height();
    const double pathHeight = QFontMetricsF(fontOf(TextStyle::caption)).height();
    QRectF line = centredIn(area, path.isEmpty() ? nameHeight : nameHeight + pathHeight + 1);
    line.setHeight(nameHeight);
    drawLine(painter, line, style, colors.text, name, Qt::AlignLeft);
    drawLine(painter, {line.left(), line.bottom() + 1, line.width(), pathHeight}, TextStyle::caption,
             colors.secondary, path, Qt::AlignLeft);
}

void drawSparkline(QPainter &painter, const QRectF &area, const std::vector<std::int64_t> &counts,
                   const SparklineMeasures &measures, const ThemeColors &colors) {
    constexpr double height = 26;
    const PixelGrid grid(painter);
    QRectF plot = centredIn(area, height);
    const double base = grid.y(plot.bottom() - 1);
    plot.setBottom(base);
    painter.fillRect(grid.rect({plot.left(), base, plot.width(), 1}), colors.axis);
    for (const QRectF &bar : layoutSparkline(counts, measures, plot)) {
        if (bar.height() <= 0)
            continue;
        const double bars = grid.length(bar.height());
        painter.fillRect(QRectF(grid.x(bar.left()), base - bars, grid.length(bar.width()), bars),
                         colors.accent);
    }
}

void drawProjectCost(QPainter &painter, const QRectF &area, const std::optional<double> &cost, double share,
                     const ThemeColors &colors) {
    if (!cost) {
        drawPriceMark(painter, area, colors);
        return;
    }
    constexpr double barHeight = 6;
    constexpr double toBar = 5;
    const double textHeight = QFontMetricsF(fontOf(TextStyle::labelStrong)).height();
    QRectF line = centredIn(area, textHeight + toBar + barHeight);
    drawUsageBar(painter, {line.left(), line.bottom() - barHeight, line.width(), barHeight}, share,
                 colors.accent, colors);
    line.setHeight(textHeight);
    const QString text = textOf(costText(*cost));
    drawLine(painter, line, TextStyle::labelStrong, colors.text, text, Qt::AlignRight);
    constexpr double roomForShare = 40;
    if (QFontMetricsF(painter.font()).horizontalAdvance(text) + roomForShare <= line.width())
        drawLine(painter, line, TextStyle::caption, colors.secondary, shareText(share), Qt::AlignLeft);
}

void drawTotalCost(QPainter &painter, const QRectF &area, const PricedTokens &price,
                   const ThemeColors &colors) {
    drawLine(painter, area, TextStyle::labelStrong, colors.text, textOf(priceText(price)), Qt::AlignRight);
}

void drawProjectFigure(QPainter &painter, const QRectF &area, const QString &text,
                       const ThemeColors &colors) {
    drawLine(painter, area, TextStyle::bodyStrong, colors.text, text, Qt::AlignRight);
}

void drawProjectAge(QPainter &painter, const QRectF &area, const QString &text, const ThemeColors &colors) {
    drawLine(painter, area, TextStyle::caption, colors.secondary, text, Qt::AlignRight);
}

} // namespace burnwick
