// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/Badge.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/theme/TextStyle.h"

#include <QPainter>

namespace burnwick {

Badge::Badge(const QString &text, QColor ThemeColors::*color, QWidget *parent)
    : QWidget(parent)
    , m_text(text)
    , m_color(color) {
    setFont(fontOf(TextStyle::captionStrong));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleRole(*this, QAccessible::StaticText);
    setAccessibleName(text);
}

QSize Badge::sizeHint() const {
    constexpr QSize padding(9, 3);
    return fontMetrics().size(Qt::TextSingleLine, m_text) + 2 * padding;
}

void Badge::paintEvent(QPaintEvent *) {
    constexpr double radius = 6;
    const QColor color = colorsFor(*this).*m_color;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(withOpacity(color, badgeOpacity));
    painter.drawRoundedRect(rect(), radius, radius);
    painter.setPen(color);
    painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, m_text);
}

} // namespace burnwick
