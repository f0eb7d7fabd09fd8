// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/PriceMark.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/text/Text.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QFontMetrics>
#include <QPainter>

namespace burnwick {

namespace {

constexpr QSize padding{8, 2};

QSize markSize() {
    return QFontMetrics(fontOf(TextStyle::captionStrong)).size(Qt::TextSingleLine, noPriceText()) +
           2 * padding;
}

} // namespace

QString noPriceText() {
    return QStringLiteral("no price");
}

QString noPriceTip() {
    return QStringLiteral("Burnwick knows no price for this model. Its tokens are counted, its cost is not.");
}

void drawPriceMark(QPainter &painter, const QRectF &area, const ThemeColors &colors) {
    constexpr double radius = 6;
    const QSizeF size = QSizeF(markSize()).boundedTo(area.size());
    const QRectF mark(QPointF(area.right() - size.width(), area.center().y() - size.height() / 2), size);
    fillRounded(painter, mark, radius, colors.mark);
    painter.setFont(fontOf(TextStyle::captionStrong));
    painter.setPen(colors.secondary);
    painter.drawText(mark, Qt::AlignCenter, noPriceText());
}

PriceMark::PriceMark() {
    setAccessibleRole(*this, QAccessible::StaticText);
    setAccessibleName(noPriceText());
    setPlainToolTip(*this, noPriceTip());
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Ignored);
}

QSize PriceMark::sizeHint() const {
    return markSize();
}

void PriceMark::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    drawPriceMark(painter, rect(), colorsFor(*this));
}

} // namespace burnwick
