// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QPushButton>
#include <QSize>

#include <optional>

namespace burnwick {

/// A button that is but its text on a rounded ground. Text is secondary to what it does, so it carries its
/// own style instead of the desktop's.
class FlatButton : public QPushButton {
    Q_OBJECT
    Q_PROPERTY(int radius READ radius CONSTANT)

public:
    /// How such a button looks; grounds and text as roles of the theme.
    struct Look {
        TextStyle text = TextStyle::body;
        std::optional<TextStyle> chosenText = {}; ///< while checked; there is always room for it
        QSize padding;                            ///< at each side and at top and bottom
        int radius = 6;
        QColor ThemeColors::*ground = nullptr; ///< at rest; none when absent
        QColor ThemeColors::*hovered = nullptr;
        QColor ThemeColors::*pressed = nullptr;
        QColor ThemeColors::*chosen = nullptr;  ///< while checked
        QColor ThemeColors::*outline = nullptr; ///< none when absent
        QColor ThemeColors::*restingText = &ThemeColors::text;
    };

    FlatButton(const QString &text, const Look &look, QWidget *parent = nullptr);

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
