// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/StatusPill.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/theme/TextStyle.h"

#include <QPainter>

namespace burnwick {

namespace {

constexpr int dotDiameter = 7;
constexpr int sidePadding = 9;
constexpr int dotSpacing = 6;
constexpr int pillHeight = 21;

} // namespace

StatusPill::StatusPill() {
    setFont(fontOf(TextStyle::captionStrong));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleRole(*this, QAccessible::StaticText);
}

void StatusPill::setState(const QString &text, QColor ThemeColors::*color, QColor ThemeColors::*textColor,
                          double groundOpacity) {
    m_text = text;
    m_color = color;
    m_textColor = textColor;
    m_groundOpacity = groundOpacity;
    setAccessibleName(QStringLiteral("OAuth token status: ") + text);
    updateGeometry();
    update();
}

QSize StatusPill::sizeHint() const {
    return {2 * sidePadding + dotDiameter + dotSpacing + fontMetrics().horizontalAdvance(m_text), pillHeight};
}

void StatusPill::paintEvent(QPaintEvent *) {
    const QColor color = colorsFor(*this).*m_color;
    QPainter painter(this);
    fillRounded(painter, rect(), height() / 2.0, withOpacity(color, m_groundOpacity));
    painter.setBrush(color);
    painter.drawEllipse(QRectF(sidePadding, (height() - dotDiameter) / 2.0, dotDiameter, dotDiameter));
    painter.setPen(colorsFor(*this).*m_textColor);
    painter.drawText(rect().adjusted(sidePadding + dotDiameter + dotSpacing, 0, 0, 0),
                     Qt::AlignVCenter | Qt::AlignLeft, m_text);
}

} // namespace burnwick
