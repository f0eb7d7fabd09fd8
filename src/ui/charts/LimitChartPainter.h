// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/charts/LimitChartLayout.h"
#include "ui/theme/ThemeColors.h"

namespace burnwick {

class PixelGrid;

/// Returns the colour role of forecasts in that tone.
[[nodiscard]] QColor ThemeColors::*forecastColor(LimitWords::Tone tone);

/// Returns the colour of the area below what was measured, or of a forecast's band.
[[nodiscard]] QColor measuredFill(const ThemeColors &colors);
[[nodiscard]] QColor bandFill(const ThemeColors &colors, LimitWords::Tone tone);

/// @name Draw the lines of a limit chart. They change the painter's pen.
void drawMeasured(QPainter &painter, const QPolygonF &line, const ThemeColors &colors);
void drawForecast(QPainter &painter, const QLineF &line, const QColor &color, double dash = 5,
                  double gap = 4);
void drawEvenPace(QPainter &painter, const QLineF &line, const ThemeColors &colors);

/// Paints the chart, and that reading's place as pointed at. Changes the painter's state.
void paintLimitChart(QPainter &painter, const LimitChartLayout &layout, const LimitChartFonts &fonts,
                     const ThemeColors &colors, const std::optional<LimitChartLayout::Reading> &pointed);

} // namespace burnwick
