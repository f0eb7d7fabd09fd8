// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/ThemeColors.h"

#include <QWidget>

namespace burnwick {

/// Draws a bar with a filled share in percent, at most 100; a share above 0 fills at least a dot. Changes the
/// painter's pen, brush and hints.
void drawUsageBar(QPainter &painter, const QRectF &bar, double percent, const QColor &fill,
                  const ThemeColors &colors);

/// A horizontal bar with a filled share. Invisible to assistive technology, because a text beside it has the
/// figure.
class UsageBar final : public QWidget {
    Q_OBJECT

public:
    /// Empty, in the accent colour.
    UsageBar();

    /// Sets the filled share in percent, clamped to 0 to 100; NaN counts as 0. A share above 0 fills at least
    /// a dot. Repaints only for another share.
    void setShare(double percent);
    /// Sets the role of the fill's colour. Repaints only for another role.
    void setColor(QColor ThemeColors::*role);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    double m_share = 0; ///< 0 to 100
    QColor ThemeColors::*m_color = &ThemeColors::accent;
};

} // namespace burnwick
