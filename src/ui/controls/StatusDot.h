// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/ThemeColors.h"

#include <QWidget>

namespace burnwick {

/// A small disc whose colour tells a state. There is a word beside it, so assistive technology is told
/// nothing of the disc.
class StatusDot final : public QWidget {
    Q_OBJECT

public:
    explicit StatusDot(QWidget *parent = nullptr);

    /// Repaints only when it differs.
    void setColor(QColor ThemeColors::*color);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QColor ThemeColors::*m_color = &ThemeColors::secondary;
};

} // namespace burnwick
