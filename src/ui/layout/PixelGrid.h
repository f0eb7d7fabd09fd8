// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QRectF>
#include <QTransform>

class QPainter;

namespace burnwick {

/// Aligns edges with the device pixels, so that they are sharp at each scale and position of the widget.
/// Takes and returns logical coordinates of the painter, whose transform may scale and translate, but not
/// rotate.
class PixelGrid {
public:
    explicit PixelGrid(const QPainter &painter);

    /// The nearest edge between two pixels.
    [[nodiscard]] double x(double value) const;
    [[nodiscard]] double y(double value) const;
    /// The whole pixels in that length, at least one; independent of the position.
    [[nodiscard]] double length(double value) const;
    /// The rectangle with aligned corner and lengths.
    [[nodiscard]] QRectF rect(const QRectF &value) const;

private:
    QTransform m_toDevice;
};

} // namespace burnwick
