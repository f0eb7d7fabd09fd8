// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/LimitKey.h"

#include "ui/charts/LimitChartPainter.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/theme/TextStyle.h"

#include <QPainter>
#include <QStringList>

#include <algorithm>

namespace burnwick {

namespace {

constexpr int swatchWidth = 16;
constexpr int swatchHeight = 8;
constexpr int textLeft = 24;
constexpr int spacing = 8;

void drawSwatch(QPainter &painter, LimitKeyRow::Line line, double middle, const ThemeColors &colors,
                LimitWords::Tone tone) {
    const QRectF area(0, middle - swatchHeight / 2.0, swatchWidth, swatchHeight);
    switch (line) {
    case LimitKeyRow::Line::measured: {
        const double top = area.top() + 1;
        painter.fillRect(QRectF(0, top, swatchWidth, swatchHeight), measuredFill(colors));
        painter.fillRect(QRectF(0, top, swatchWidth, 2), colors.accent);
        break;
    }
    case LimitKeyRow::Line::forecast:
        painter.fillRect(area, bandFill(colors, tone));
        drawForecast(painter, {area.left(), middle, area.right(), middle}, colors.*forecastColor(tone), 4, 2);
        break;
    case LimitKeyRow::Line::evenPace:
        drawEvenPace(painter, {area.left(), middle, area.right(), middle}, colors);
        break;
    }
}

} // namespace

LimitKey::LimitKey() {
    setFont(fontOf(TextStyle::caption));
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    setAccessibleRole(*this, QAccessible::StaticText);
}

void LimitKey::setRows(const std::vector<LimitKeyRow> &rows, LimitWords::Tone tone) {
    if (m_rows == rows && m_tone == tone)
        return;
    m_rows = rows;
    m_tone = tone;
    QStringList names;
    for (const LimitKeyRow &row : rows)
        names << row.label + QLatin1String(": ") + row.value;
    setAccessibleName(names.join(QLatin1String(", ")));
    updateGeometry();
    update();
}

void LimitKey::setDense(bool dense) {
    m_rowHeight = dense ? 16 : 18;
    updateGeometry();
}

QSize LimitKey::sizeHint() const {
    return {0, static_cast<int>(m_rows.size()) * m_rowHeight};
}

void LimitKey::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = colorsFor(*this);
    const QFont strong = fontOf(TextStyle::captionStrong).resolve(font());
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    QRect area(0, 0, width(), m_rowHeight);
    for (const LimitKeyRow &row : m_rows) {
        drawSwatch(painter, row.line, area.top() + m_rowHeight / 2.0 + 1, colors, m_tone);
        painter.setFont(strong);
        painter.setPen(colors.text);
        painter.drawText(area, Qt::AlignRight | Qt::AlignVCenter, row.value);
        const int room = width() - textLeft - spacing - painter.fontMetrics().horizontalAdvance(row.value);
        painter.setFont(font());
        painter.setPen(colors.secondary);
        painter.drawText(area.adjusted(textLeft, 0, 0, 0), Qt::AlignLeft | Qt::AlignVCenter,
                         painter.fontMetrics().elidedText(row.label, Qt::ElideMiddle, std::max(0, room)));
        area.translate(0, m_rowHeight);
    }
}

} // namespace burnwick
