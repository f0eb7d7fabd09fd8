// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QWidget>

namespace burnwick {

struct ThemeColors;

/// "no price"
[[nodiscard]] QString noPriceText();
/// Why there is no price, for a tool tip.
[[nodiscard]] QString noPriceTip();

/// Draws the text "no price" on a tint, at the area's right edge and in its vertical centre. Changes the
/// painter's pen, brush, font and hints.
void drawPriceMark(QPainter &painter, const QRectF &area, const ThemeColors &colors);

/// The mark "no price" in place of a cost, with its tool tip. No higher than the texts beside it.
class PriceMark final : public QWidget {
    Q_OBJECT

public:
    PriceMark();

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;
};

} // namespace burnwick
