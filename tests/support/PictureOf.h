// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/ThemeColors.h"

#include <QImage>
#include <QWidget>

namespace burnwick::test {

/// Renders the widget on a card, at that device pixel ratio.
inline QImage pictureOf(QWidget &widget, double scale = 1) {
    QImage picture(widget.size() * scale, QImage::Format_RGB32);
    picture.setDevicePixelRatio(scale);
    picture.fill(colorsFor(widget).card);
    widget.render(&picture, {}, {}, QWidget::DrawChildren);
    return picture;
}

} // namespace burnwick::test
