// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/text/TextLabel.h"

#include "ui/text/Text.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

namespace burnwick {

TextLabel::TextLabel(const QString &text, TextStyle style, QPalette::ColorRole color) {
    setTextFormat(Qt::PlainText);
    setFont(fontOf(style));
    setForegroundRole(color);
    setText(text);
}

void TextLabel::setColorGroup(QPalette::ColorGroup group) {
    m_colorGroup = group;
    update();
}

void TextLabel::setColor(QColor ThemeColors::*color) {
    m_color = color;
    update();
}

void TextLabel::setElidable() {
    m_elidable = true;
    // So that its neighbours do not shrink for a long text.
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    updateGeometry();
}

QSize TextLabel::minimumSizeHint() const {
    const QSize hint = QLabel::minimumSizeHint();
    return m_elidable ? QSize(0, hint.height()) : hint;
}

QString TextLabel::shownText() const {
    return fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
}

bool TextLabel::event(QEvent *event) {
    if (event->type() != QEvent::ToolTip || !toolTip().isEmpty())
        return QLabel::event(event);
    const auto *help = static_cast<QHelpEvent *>(event);
    if (shownText() == text())
        QToolTip::hideText();
    else
        QToolTip::showText(help->globalPos(), plainToolTip(text()), this);
    return true;
}

void TextLabel::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const auto ownGroup = isEnabled() ? QPalette::Active : QPalette::Disabled;
    painter.setPen(m_color != nullptr ? colorsFor(*this).*m_color
                                      : palette().color(m_colorGroup.value_or(ownGroup), foregroundRole()));
    painter.drawText(contentsRect(), static_cast<int>(alignment()) | Qt::TextSingleLine, shownText());
}

} // namespace burnwick
