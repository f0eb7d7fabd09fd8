// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QWidget>

namespace burnwick {

struct ThemeColors;

/// Draws the cell of a day with that level, 0 to 4. Changes the painter's pen and brush.
void drawHeatCell(QPainter &painter, const QRectF &cell, int level, const ThemeColors &colors);

/// The colours of the heatmap from less to more.
class HeatmapLegend final : public QWidget {
    Q_OBJECT

public:
    HeatmapLegend();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
};

} // namespace burnwick
