// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>
#include <QString>

class QColor;
class QPainter;
class QRect;
class QWidget;

namespace burnwick {

/// Returns the icon of an SVG file or resource, sharp at any size. Unlike QIcon(file) it needs no plugin of
/// Qt, which some systems have in a separate package.
[[nodiscard]] QIcon svgIcon(const QString &file);

/// Draws the icon's shape in that colour at `area`; of the icon only the opacity counts.
void drawTinted(QPainter &painter, const QRect &area, const QIcon &icon, const QColor &color);

/// The application's icon.
[[nodiscard]] QIcon applicationIcon();

/// Returns a widget with the application's icon in a square of that side; the caller adds it to a layout.
[[nodiscard]] QWidget *makeLogo(int side);

} // namespace burnwick
