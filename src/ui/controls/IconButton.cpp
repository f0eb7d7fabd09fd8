// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/IconButton.h"

#include "ui/controls/SvgIcon.h"
#include "ui/theme/ThemeColors.h"

#include <QPainter>

namespace burnwick {

namespace {

constexpr int buttonSize = 28;
constexpr int pictureSize = 16;

} // namespace

IconButton::IconButton(const QString &picture, const QString &name)
    : m_picture(svgIcon(picture)) {
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleName(name);
    setToolTip(name);
}

QSize IconButton::sizeHint() const {
    return {buttonSize, buttonSize};
}

void IconButton::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = colorsFor(*this);
    QPainter painter(this);
    if (isDown() || underMouse())
        fillRounded(painter, rect(), radius(), isDown() ? colors.pressed : colors.hover);
    const int margin = (buttonSize - pictureSize) / 2;
    drawTinted(painter, {margin, margin, pictureSize, pictureSize}, m_picture,
               underMouse() ? colors.text : colors.secondary);
}

} // namespace burnwick
