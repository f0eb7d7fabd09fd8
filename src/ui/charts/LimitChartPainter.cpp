// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/LimitChartPainter.h"

#include "ui/layout/PixelGrid.h"

#include <QPainter>

#include <cmath>

namespace burnwick {

namespace {

using Layout = LimitChartLayout;

/// Whether the colours are those of the dark scheme, whose card needs stronger translucent colours.
bool isDark(const ThemeColors &colors) {
    return &colors == &colorsOf(ColorScheme::dark);
}

QColor guideColor(Layout::GuideLine::Kind kind, const ThemeColors &colors) {
    return kind == Layout::GuideLine::Kind::faint ? colors.line
                                                  : withOpacity(colors.text, isDark(colors) ? 0.32 : 0.30);
}

void fillShape(QPainter &painter, const QPolygonF &shape, const QColor &color) {
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawPolygon(shape);
}

void drawDot(QPainter &painter, const QPointF &centre, double radius, const QPen &ring, const QColor &color) {
    painter.setPen(ring);
    painter.setBrush(color);
    painter.drawEllipse(centre, radius, radius);
}

/// Paints whole pixels.
class Lines {
public:
    explicit Lines(QPainter &painter)
        : m_painter(painter)
        , m_grid(painter) {}

    void horizontal(double left, double right, double y, const QColor &color) const {
        m_painter.fillRect(QRectF(left, m_grid.y(y), right - left, m_grid.length(1)), color);
    }
    void vertical(double x, double top, double bottom, const QColor &color) const {
        m_painter.fillRect(
            QRectF(m_grid.x(x), m_grid.y(top), m_grid.length(1), m_grid.y(bottom) - m_grid.y(top)), color);
    }

private:
    QPainter &m_painter;
    PixelGrid m_grid;
};

void drawGuideLines(const Lines &lines, const Layout &layout, const ThemeColors &colors) {
    constexpr double dash = 3;
    constexpr double tickLength = 4;
    const QRectF &plot = layout.plot;
    for (const Layout::GuideLine &guide : layout.guideLines) {
        const QColor color = guideColor(guide.kind, colors);
        const bool isDashed = guide.kind == Layout::GuideLine::Kind::threshold;
        for (double x = plot.left(); isDashed && x < plot.right(); x += 2 * dash)
            lines.horizontal(x, std::min(x + dash, plot.right()), guide.y, color);
        if (!isDashed)
            lines.horizontal(plot.left(), plot.right(), guide.y, color);
    }
    for (const Layout::Mark &tick : layout.ticks)
        lines.vertical(tick.x, plot.bottom() + 1, plot.bottom() + tickLength, colors.line);
}

void drawAreas(QPainter &painter, const Layout &layout, const ThemeColors &colors) {
    for (QPolygonF area : layout.measured) {
        area << QPointF(area.back().x(), layout.plot.bottom())
             << QPointF(area.front().x(), layout.plot.bottom());
        fillShape(painter, area, measuredFill(colors));
    }
    if (!layout.band.isEmpty())
        fillShape(painter, layout.band, bandFill(colors, layout.tone));
}

/// Stripes from the lower left to the upper right.
void drawWait(QPainter &painter, const QRectF &area, const ThemeColors &colors) {
    const double distance = 6 * std::sqrt(2.0); // along the edge
    painter.save();
    painter.setClipRect(area);
    painter.fillRect(area, withOpacity(colors.over, isDark(colors) ? 0.07 : 0.06));
    painter.setPen(QPen(withOpacity(colors.over, isDark(colors) ? 0.32 : 0.30), 1));
    for (double x = area.left(); x < area.right() + area.height(); x += distance)
        painter.drawLine(QPointF(x - area.height(), area.bottom()), QPointF(x, area.top()));
    painter.restore();
}

void drawCurves(QPainter &painter, const Layout &layout, const ThemeColors &colors) {
    if (layout.evenPace)
        drawEvenPace(painter, *layout.evenPace, colors);
    const QPolygonF *before = nullptr;
    for (const QPolygonF &run : layout.measured) {
        if (before != nullptr) {
            painter.setPen(QPen(withOpacity(colors.accent, 0.4), 1));
            painter.drawLine(before->back(), run.front());
        }
        drawMeasured(painter, run, colors);
        before = &run;
    }
    if (layout.forecast)
        drawForecast(painter, *layout.forecast, colors.*forecastColor(layout.tone));
}

void drawDots(QPainter &painter, const Layout &layout, const ThemeColors &colors) {
    const QColor color = colors.*forecastColor(layout.tone);
    if (layout.forecast && layout.wait.isEmpty())
        drawDot(painter, layout.forecast->p2(), 3, QPen(color, 2), colors.card);
    if (!layout.measured.empty())
        drawDot(painter, layout.measured.back().back(), 4, QPen(colors.card, 2), colors.accent);
    if (!layout.wait.isEmpty())
        drawDot(painter, layout.wait.topLeft(), 3.5, QPen(colors.card, 1.5), colors.over);
}

void drawTexts(QPainter &painter, const Layout &layout, const LimitChartFonts &fonts,
               const ThemeColors &colors) {
    constexpr int flags = Qt::AlignHCenter | Qt::AlignVCenter | Qt::TextDontClip;
    painter.setFont(fonts.axis);
    painter.setPen(colors.secondary);
    for (const Layout::GuideLine &guide : layout.guideLines)
        painter.drawText(guide.labelRect, Qt::AlignRight | Qt::AlignVCenter | Qt::TextDontClip, guide.label);
    for (const Layout::Mark &tick : layout.ticks)
        painter.drawText(tick.labelRect, flags, tick.label);
    painter.setFont(fonts.mark);
    if (layout.now) {
        painter.setPen(colors.text);
        painter.drawText(layout.now->labelRect, flags, layout.now->label);
    }
    painter.setPen(colors.overText);
    if (layout.full)
        painter.drawText(layout.full->labelRect, flags, layout.full->label);
    if (layout.waitLabel.label.isEmpty())
        return;
    constexpr double radius = 6;
    fillRounded(painter, layout.waitLabel.labelRect, radius, colors.card);
    painter.setFont(fonts.note);
    painter.setPen(colors.overText);
    painter.drawText(layout.waitLabel.labelRect, flags, layout.waitLabel.label);
}

} // namespace

QColor ThemeColors::*forecastColor(LimitWords::Tone tone) {
    switch (tone) {
    case LimitWords::Tone::over:
        return &ThemeColors::over;
    case LimitWords::Tone::near:
        return &ThemeColors::near;
    case LimitWords::Tone::calm:
        break;
    }
    return &ThemeColors::accent;
}

QColor measuredFill(const ThemeColors &colors) {
    return withOpacity(colors.accent, 0.20);
}

QColor bandFill(const ThemeColors &colors, LimitWords::Tone tone) {
    return withOpacity(colors.*forecastColor(tone), isDark(colors) ? 0.20 : 0.15);
}

void drawMeasured(QPainter &painter, const QPolygonF &line, const ThemeColors &colors) {
    painter.setPen(QPen(colors.accent, 2, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.drawPolyline(line);
}

void drawForecast(QPainter &painter, const QLineF &line, const QColor &color, double dash, double gap) {
    constexpr double width = 1.75;
    QPen pen(color, width, Qt::CustomDashLine, Qt::FlatCap);
    pen.setDashPattern({dash / width, gap / width});
    painter.setPen(pen);
    painter.drawLine(line);
}

void drawEvenPace(QPainter &painter, const QLineF &line, const ThemeColors &colors) {
    constexpr double width = 1.2;
    QPen pen(withOpacity(colors.secondary, 0.85), width, Qt::CustomDashLine, Qt::FlatCap);
    pen.setDashPattern({1, 4 / width - 1});
    painter.setPen(pen);
    painter.drawLine(line);
}

void paintLimitChart(QPainter &painter, const Layout &layout, const LimitChartFonts &fonts,
                     const ThemeColors &colors, const std::optional<Layout::Reading> &pointed) {
    const Lines lines(painter);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF &plot = layout.plot;
    drawAreas(painter, layout, colors);
    if (!layout.wait.isEmpty())
        drawWait(painter, layout.wait, colors);
    drawGuideLines(lines, layout, colors);
    if (layout.now)
        lines.vertical(layout.now->x, plot.top(), plot.bottom(), withOpacity(colors.text, 0.35));
    if (layout.full)
        lines.vertical(layout.full->x, plot.top(), plot.bottom(), withOpacity(colors.over, 0.6));
    drawCurves(painter, layout, colors);
    drawDots(painter, layout, colors);
    drawTexts(painter, layout, fonts, colors);
    if (pointed) {
        lines.vertical(pointed->point.x(), plot.top(), plot.bottom(), withOpacity(colors.text, 0.55));
        drawDot(painter, pointed->point, 4, QPen(colors.card, 2), colors.text);
    }
}

} // namespace burnwick
