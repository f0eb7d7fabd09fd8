// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/TextStyle.h"

#include <QLabel>
#include <QPalette>

#include <optional>

namespace burnwick {

/// A line of plain text, whatever is in it. Where it finds too little room it is elided in the middle and the
/// whole text becomes the tool tip; text() and assistive technology always have the whole.
class TextLabel final : public QLabel {
    Q_OBJECT

public:
    /// The colour's role as in ThemePalette.h: WindowText, or PlaceholderText for the secondary colour.
    explicit TextLabel(TextStyle style, QPalette::ColorRole color = QPalette::WindowText,
                       QWidget *parent = nullptr);
    explicit TextLabel(const QString &text, TextStyle style, QPalette::ColorRole color = QPalette::WindowText,
                       QWidget *parent = nullptr);

    /// Active or Disabled, whose texts have the tertiary colour. Without it, it follows isEnabled().
    void setColorGroup(QPalette::ColorGroup group);

    /// Lets the label shrink below its text. Without it the text gets the room it needs.
    void setElidable();

    [[nodiscard]] QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    [[nodiscard]] QString shownText() const;

    std::optional<QPalette::ColorGroup> m_colorGroup;
    bool m_elidable = false;
};

} // namespace burnwick
