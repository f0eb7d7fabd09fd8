// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/HeatCell.h"

#include "ui/layout/PixelGrid.h"
#include "ui/theme/ThemeColors.h"

#include <QPainter>

namespace burnwick {

void drawHeatCell(QPainter &painter, const PixelGrid &grid, const QRectF &cell, int level,
                  const ThemeColors &colors) {
    constexpr double radius = 2.5;
    const QRectF sharp(grid.x(cell.left()), grid.y(cell.top()), grid.length(cell.width()),
                       grid.length(cell.height()));
    painter.setBrush(level == 0 ? colors.emptyCell : colors.heat.at(static_cast<std::size_t>(level) - 1));
    painter.drawRoundedRect(sharp, radius, radius);
}

} // namespace burnwick
