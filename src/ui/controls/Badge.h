// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/ThemeColors.h"

#include <QWidget>

namespace burnwick {

/// A word on a breath of its own colour: a state that wants no action.
class Badge final : public QWidget {
    Q_OBJECT

public:
    Badge(const QString &text, QColor ThemeColors::*color, QWidget *parent = nullptr);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    QColor ThemeColors::*m_color;
};

} // namespace burnwick
