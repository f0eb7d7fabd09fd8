// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QPushButton>
#include <QSize>

#include <optional>

namespace burnwick {

/// A button of text on a rounded background, painted without the desktop's style.
class FlatButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(int radius READ radius CONSTANT)

public:
    /// Colours are roles of the theme; null for no background or outline.
    struct Look {
        TextStyle text = TextStyle::body;
        std::optional<TextStyle> chosenText = {}; ///< while checked; the size hint includes it
        QSize padding;                            ///< left and right, above and below
        int radius = 6;
        QColor ThemeColors::*ground = nullptr; ///< in all other states
        QColor ThemeColors::*hovered = nullptr;
        QColor ThemeColors::*pressed = nullptr;
        QColor ThemeColors::*chosen = nullptr; ///< while checked
        QColor ThemeColors::*outline = nullptr;
        QColor ThemeColors::*restingText = &ThemeColors::text;
    };

    FlatButton(const QString &text, const Look &look);

    [[nodiscard]] QSize sizeHint() const override;
    [[nodiscard]] QSize minimumSizeHint() const override { return sizeHint(); }
    [[nodiscard]] int radius() const { return m_look.radius; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QColor ThemeColors::*groundNow() const;
    [[nodiscard]] QFont chosenFont() const;

    Look m_look;
};

} // namespace burnwick
