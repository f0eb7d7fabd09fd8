// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QStringList>
#include <QWidget>

namespace burnwick {

/// A plain text of fixed width that wraps, after a triangle if it is a warning. It elides what exceeds its
/// last line; assistive technology always has the whole text.
class WrappedText final : public QWidget {
    Q_OBJECT

public:
    /// In logical pixels.
    struct Measures {
        int line;  ///< the height of a line
        int lines; ///< the most
        int width;
    };

    WrappedText(TextStyle style, const Measures &measures);

    /// Repaints only for other values.
    void setText(const QString &text, QColor ThemeColors::*color, bool isWarning = false);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }

protected:
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] int indent() const;
    [[nodiscard]] QStringList lines() const;

    Measures m_measures;
    QColor ThemeColors::*m_color = &ThemeColors::text;
    bool m_isWarning = false;
};

} // namespace burnwick
