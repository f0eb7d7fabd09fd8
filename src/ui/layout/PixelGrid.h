// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QPointF>
#include <QTransform>

class QPainter;

namespace burnwick {

/// Moves edges onto the pixels of what is painted on, so that they are sharp at every scale and wherever the
/// widget stands in its window. Takes and gives logical coordinates of the painter, which may be scaled and
/// shifted, not turned.
class PixelGrid {
public:
    explicit PixelGrid(const QPainter &painter);

    /// The edge between two pixels that is nearest.
    [[nodiscard]] double x(double value) const;
    [[nodiscard]] double y(double value) const;
    /// As many whole pixels as fit, one at least, so the same for all places.
    [[nodiscard]] double length(double value) const;

private:
    QTransform m_toDevice;
};

} // namespace burnwick
