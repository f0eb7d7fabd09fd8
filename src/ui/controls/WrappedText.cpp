// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/WrappedText.h"

#include "ui/controls/AccessibleRole.h"

#include <QEvent>
#include <QPainter>
#include <QTextLayout>

#include <algorithm>

namespace burnwick {

namespace {

/// 15 x 14 with its outline; its base is level with the feet of the capitals beside it.
void drawTriangle(QPainter &painter, const QColor &color) {
    painter.setPen(QPen(color, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(QPolygonF({{7.5, 1.6}, {14.3, 13.4}, {0.7, 13.4}}));
    painter.drawLine(QPointF(7.5, 6), QPointF(7.5, 9.2));
    painter.drawPoint(QPointF(7.5, 11.4));
}

} // namespace

WrappedText::WrappedText(TextStyle style, const Measures &measures)
    : m_measures(measures) {
    setFont(fontOf(style));
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    setAccessibleRole(*this, QAccessible::StaticText);
}

void WrappedText::setText(const QString &text, QColor ThemeColors::*color, bool isWarning) {
    if (accessibleName() == text && m_color == color && m_isWarning == isWarning)
        return;
    m_color = color;
    m_isWarning = isWarning;
    setAccessibleName(text);
    updateGeometry();
    update();
}

int WrappedText::indent() const {
    return m_isWarning ? 22 : 0;
}

QStringList WrappedText::lines() const {
    const QString text = accessibleName();
    const int room = std::max(1, m_measures.width - indent());
    QTextLayout layout(text, font());
    QStringList lines;
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid() && lines.size() < m_measures.lines;
         line = layout.createLine()) {
        line.setLineWidth(room);
        const bool isLast = lines.size() == m_measures.lines - 1;
        lines << (isLast ? fontMetrics().elidedText(text.mid(line.textStart()), Qt::ElideRight, room)
                         : text.mid(line.textStart(), line.textLength()).trimmed());
    }
    layout.endLayout();
    return lines;
}

QSize WrappedText::sizeHint() const {
    return {m_measures.width, m_measures.line * static_cast<int>(lines().size())};
}

void WrappedText::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        updateGeometry();
    QWidget::changeEvent(event);
}

void WrappedText::paintEvent(QPaintEvent *) {
    const QColor color = colorsFor(*this).*m_color;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (m_isWarning)
        drawTriangle(painter, color);
    painter.setPen(color);
    QRect line(indent(), 0, width() - indent(), m_measures.line);
    for (const QString &text : lines()) {
        painter.drawText(line, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextDontClip, text);
        line.translate(0, m_measures.line);
    }
}

} // namespace burnwick
