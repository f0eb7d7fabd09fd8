// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/ThemeColors.h"

#include <QWidget>

namespace burnwick {

/// A horizontal bar, filled from the left by a share of its width. The figure stands in a text beside it,
/// so assistive technology is told nothing of the bar.
class UsageBar final : public QWidget {
    Q_OBJECT

public:
    /// Empty, in the accent.
    explicit UsageBar(QWidget *parent = nullptr);

    /// In percent. Below 0 and what is no number show as 0, above 100 as 100; the least share above 0 is a
    /// dot. Repaints only when the shown share differs.
    void setShare(double percent);
    /// The role that the fill takes its colour from, in either scheme. Repaints only when it differs.
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
