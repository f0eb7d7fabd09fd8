// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemeColors.h"

#include <QLabel>
#include <QPalette>

#include <optional>

namespace burnwick {

/// A line of plain text. With too little room it elides the middle and shows the whole text as its tool tip;
/// text() and assistive technology always have the whole text.
class TextLabel final : public QLabel {
    Q_OBJECT

public:
    /// `color` is a role of paletteOf(): WindowText, or PlaceholderText for the secondary colour.
    explicit TextLabel(TextStyle style, QPalette::ColorRole color = QPalette::WindowText)
        : TextLabel({}, style, color) {}
    TextLabel(const QString &text, TextStyle style, QPalette::ColorRole color = QPalette::WindowText);

    /// Sets the group of the text's colour; Disabled is the tertiary colour. By default the group follows
    /// isEnabled().
    void setColorGroup(QPalette::ColorGroup group);

    /// Sets a colour of the theme in place of that of the role.
    void setColor(QColor ThemeColors::*color);

    /// Allows sizes below the text's. By default the label requires room for the whole text.
    void setElidable();

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QString shownText() const;

    std::optional<QPalette::ColorGroup> m_colorGroup;
    QColor ThemeColors::*m_color = nullptr; ///< null for that of the role
    bool m_elidable = false;
};

} // namespace burnwick
