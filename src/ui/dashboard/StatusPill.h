// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/ThemeColors.h"

#include <QWidget>

namespace burnwick {

/// A word and a dot in one colour, on a breath of it.
class StatusPill final : public QWidget {
    Q_OBJECT

public:
    explicit StatusPill(QWidget *parent = nullptr);

    void setState(const QString &text, QColor ThemeColors::*color, double groundOpacity);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    QColor ThemeColors::*m_color = &ThemeColors::secondary;
    double m_groundOpacity = 0;
};

} // namespace burnwick
