// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/projects/ProjectsModel.h"
#include "ui/projects/Sparkline.h"

#include <QRectF>
#include <QString>

#include <cstdint>
#include <optional>
#include <vector>

class QPainter;

namespace burnwick {

struct ThemeColors;

/// @name The columns' places, in logical pixels
inline constexpr int projectsSidePadding = 16; ///< of the card

/// Returns the column's part of the row, without the gap after it; `row` begins and ends with the card.
[[nodiscard]] QRectF projectColumnIn(const QRectF &row, int column);
/// Returns the column's width with its gap, and with the padding at the card's edges.
[[nodiscard]] int projectSectionWidth(int column);
/// Returns how the column's texts and its head are aligned.
[[nodiscard]] Qt::Alignment projectAlignment(int column);

/// @name Draw the parts of a row into their column, centred vertically. They change the painter's state.
void drawProjectName(QPainter &painter, const QRectF &area, const QString &name, const QString &path,
                     bool isTotal, const ThemeColors &colors);
void drawSparkline(QPainter &painter, const QRectF &area, const std::vector<std::int64_t> &counts,
                   const SparklineMeasures &measures, const ThemeColors &colors);
/// With its share of all costs in percent, as text and as bar; or the mark "no price" if the cost is null.
void drawProjectCost(QPainter &painter, const QRectF &area, const std::optional<double> &cost, double share,
                     const ThemeColors &colors);
void drawTotalCost(QPainter &painter, const QRectF &area, const PricedTokens &price,
                   const ThemeColors &colors);
void drawProjectFigure(QPainter &painter, const QRectF &area, const QString &text, const ThemeColors &colors);
void drawProjectAge(QPainter &painter, const QRectF &area, const QString &text, const ThemeColors &colors);

} // namespace burnwick
