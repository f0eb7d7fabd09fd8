// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>

class QPainter;

namespace burnwick {

class PixelGrid;
struct ThemeColors;

/// Draws a day of that level, 0 to 4. The painter's pen is set.
void drawHeatCell(QPainter &painter, const PixelGrid &grid, const QRectF &cell, int level,
                  const ThemeColors &colors);

} // namespace burnwick
