// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/UsageBar.h"

#include <QPainter>

#include <algorithm>

namespace burnwick {

namespace {

constexpr int barHeight = 6;
constexpr int preferredWidth = 120;

} // namespace

void drawUsageBar(QPainter &painter, const QRectF &bar, double percent, const QColor &fill,
                  const ThemeColors &colors) {
    const double radius = bar.height() / 2;
    fillRounded(painter, bar, radius, colors.track);
    if (percent <= 0)
        return;
    const double width = std::max(bar.height(), bar.width() * std::min(percent, 100.0) / 100);
    fillRounded(painter, {bar.left(), bar.top(), width, bar.height()}, radius, fill);
}

UsageBar::UsageBar() {
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void UsageBar::setShare(double percent) {
    const double share = percent > 0 ? std::min(percent, 100.0) : 0.0;
    if (share == m_share)
        return;
    m_share = share;
    update();
}

void UsageBar::setColor(QColor ThemeColors::*role) {
    if (role == m_color)
        return;
    m_color = role;
    update();
}

QSize UsageBar::sizeHint() const {
    return {preferredWidth, barHeight};
}

QSize UsageBar::minimumSizeHint() const {
    return {barHeight, barHeight};
}

void UsageBar::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = colorsFor(*this);
    QPainter painter(this);
    drawUsageBar(painter, rect(), m_share, colors.*m_color, colors);
}

} // namespace burnwick
