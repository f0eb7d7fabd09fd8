// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/ThemeColors.h"

#include <QWidget>

namespace burnwick {

/// A dot and a text on a tint of the dot's colour.
class StatusPill final : public QWidget {
    Q_OBJECT

public:
    StatusPill();

    /// The text has another colour than the dot for the sake of its contrast.
    void setState(const QString &text, QColor ThemeColors::*color, QColor ThemeColors::*textColor,
                  double groundOpacity);

    [[nodiscard]] QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QString m_text;
    QColor ThemeColors::*m_color = &ThemeColors::secondary;
    QColor ThemeColors::*m_textColor = &ThemeColors::unknownText;
    double m_groundOpacity = 0;
};

} // namespace burnwick
