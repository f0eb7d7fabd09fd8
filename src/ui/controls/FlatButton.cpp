// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/FlatButton.h"

#include <QPainter>
#include <QStyle>

namespace burnwick {

FlatButton::FlatButton(const QString &text, const Look &look)
    : QPushButton(text)
    , m_look(look) {
    setFont(fontOf(look.text));
    setAttribute(Qt::WA_Hover);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAutoDefault(false); // paintEvent() has no look for a default button
}

QSize FlatButton::sizeHint() const {
    const auto room = [this](const QFont &font) {
        return QFontMetrics(font, this).size(Qt::TextShowMnemonic, text());
    };
    return room(font()).expandedTo(room(chosenFont())) + 2 * m_look.padding;
}

QFont FlatButton::chosenFont() const {
    return m_look.chosenText ? fontOf(*m_look.chosenText).resolve(font()) : font();
}

QColor ThemeColors::*FlatButton::groundNow() const {
    if (isDown() && m_look.pressed)
        return m_look.pressed;
    if (isChecked() && m_look.chosen)
        return m_look.chosen;
    if (underMouse() && isEnabled() && m_look.hovered)
        return m_look.hovered;
    return m_look.ground;
}

void FlatButton::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = colorsFor(*this);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (QColor ThemeColors::*ground = groundNow())
        fillRounded(painter, rect(), m_look.radius, colors.*ground);
    if (m_look.outline) {
        painter.setBrush(Qt::NoBrush);
        painter.setPen(colors.*m_look.outline);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), m_look.radius, m_look.radius);
    }
    const bool chosen = isCheckable() && isChecked();
    painter.setPen(chosen ? colors.text : colors.*m_look.restingText);
    painter.setFont(chosen ? chosenFont() : font());
    const bool showsMnemonic = style()->styleHint(QStyle::SH_UnderlineShortcut, nullptr, this) != 0;
    painter.drawText(rect(), Qt::AlignCenter | (showsMnemonic ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                     text());
}

} // namespace burnwick
