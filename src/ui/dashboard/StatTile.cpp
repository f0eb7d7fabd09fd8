// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/StatTile.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/text/TextLabel.h"
#include "ui/theme/ThemeColors.h"

#include <QPainter>
#include <QPainterPath>
#include <QVBoxLayout>

namespace burnwick {

StatTile::StatTile(const QString &label, Corners corners)
    : m_corners(corners)
    , m_label(label)
    , m_value(new TextLabel(TextStyle::figure)) {
    constexpr int sidePadding = 14;
    setDense(false);
    setAccessibleRole(*this, QAccessible::Grouping);
    m_value->setElidable();
    setMinimumWidth(sidePadding);

    auto *caption = new TextLabel(label, TextStyle::caption, QPalette::PlaceholderText);
    caption->setElidable();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(sidePadding, 0, sidePadding, 0);
    column->setSpacing(4);
    column->addStretch();
    column->addWidget(caption);
    column->addWidget(m_value);
    column->addStretch();
}

void StatTile::setValue(const QString &value) {
    if (m_value->text() == value && !value.isEmpty())
        return;
    m_value->setText(value);
    setAccessibleName(m_label + QLatin1String(": ") + value);
}

void StatTile::setDense(bool dense) {
    setFixedHeight(dense ? 64 : 92);
}

void StatTile::paintEvent(QPaintEvent *) {
    constexpr double radius = 12;
    const QRectF area(rect());
    QPainterPath shape;
    shape.setFillRule(Qt::WindingFill);
    shape.addRoundedRect(area, radius, radius);
    const QSizeF square(radius, radius);
    if (!m_corners.topLeft)
        shape.addRect({area.topLeft(), square});
    if (!m_corners.topRight)
        shape.addRect({area.topRight() - QPointF(radius, 0), square});
    if (!m_corners.bottomLeft)
        shape.addRect({area.bottomLeft() - QPointF(0, radius), square});
    if (!m_corners.bottomRight)
        shape.addRect({area.bottomRight() - QPointF(radius, radius), square});
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(shape, colorsFor(*this).card);
}

} // namespace burnwick
