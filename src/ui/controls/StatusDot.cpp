// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/StatusDot.h"

#include <QPainter>

namespace burnwick {

StatusDot::StatusDot(QWidget *parent)
    : QWidget(parent) {
    constexpr int diameter = 7;
    setFixedSize(diameter, diameter);
}

void StatusDot::setColor(QColor ThemeColors::*color) {
    if (m_color == color)
        return;
    m_color = color;
    update();
}

void StatusDot::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorsFor(*this).*m_color);
    painter.drawEllipse(rect());
}

} // namespace burnwick
