// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/ThemeColors.h"

#include "display/StatusTitle.h"

#include <QPainter>
#include <QWidget>

namespace burnwick {

namespace {

QColor colorOfIndicator(StatusIndicator indicator) {
    const RgbColor color = colorOf(indicator);
    return QColor::fromRgbF(static_cast<float>(color.red), static_cast<float>(color.green),
                            static_cast<float>(color.blue));
}

void addSharedColors(ThemeColors &colors) {
    colors.inactive = withOpacity(colors.text, 0.45);
    colors.hover = withOpacity(colors.text, 0.07);
    colors.note = withOpacity(colors.text, 0.045);
    colors.axis = withOpacity(colors.text, 0.14);
    colors.mark = withOpacity(colors.text, 0.08);
    colors.selected = withOpacity(colors.text, 0.10);
    colors.pressed = withOpacity(colors.text, 0.12);
    colors.emptyCell = withOpacity(colors.text, 0.07);
    colors.switchOff = withOpacity(colors.text, 0.18);
    colors.accent = QColor(196, 107, 79);
    colors.good = colorOfIndicator(StatusIndicator::green);
    colors.near = colorOfIndicator(StatusIndicator::orange);
    colors.over = colorOfIndicator(StatusIndicator::red);
    colors.operational = QColor(25, 195, 50);
    colors.degraded = QColor(254, 188, 46);
    colors.outage = QColor(255, 115, 106);
    colors.heat = {QColor(168, 199, 255), QColor(138, 180, 248), QColor(106, 159, 216), QColor(74, 122, 168)};
}

ThemeColors lightColors() {
    ThemeColors colors;
    colors.window = QColor(0xF4, 0xF3, 0xF1);
    colors.card = QColor(0xFF, 0xFF, 0xFF);
    colors.bar = QColor(0xEC, 0xEA, 0xE7);
    colors.text = QColor(0x1F, 0x1D, 0x1B);
    colors.secondary = QColor(0x6B, 0x67, 0x62);
    colors.tertiary = QColor(0xA5, 0xA1, 0x9B);
    colors.link = QColor(0x9D, 0x56, 0x3F);
    colors.overText = QColor(0xC6, 0x2F, 0x25);
    colors.nearText = QColor(0x8A, 0x5A, 0x00);
    colors.granted = QColor(15, 117, 34);
    colors.operationalText = QColor(14, 110, 28);
    colors.degradedText = QColor(126, 93, 23);
    colors.outageText = QColor(152, 68, 63);
    colors.unknownText = QColor(96, 93, 88);
    colors.segment = Qt::white;
    colors.line = withOpacity(colors.text, 0.08);
    colors.track = withOpacity(Qt::black, 0.06);
    addSharedColors(colors);
    return colors;
}

ThemeColors darkColors() {
    ThemeColors colors;
    colors.window = QColor(0x1B, 0x1A, 0x19);
    colors.card = QColor(0x26, 0x25, 0x23);
    colors.bar = QColor(0x21, 0x1F, 0x1E);
    colors.text = QColor(0xF3, 0xF1, 0xEE);
    colors.secondary = QColor(0xA3, 0x9F, 0x99);
    colors.tertiary = QColor(0x6F, 0x6B, 0x66);
    colors.link = QColor(0xC9, 0x77, 0x5D);
    colors.overText = QColor(0xFF, 0x7A, 0x70);
    colors.nearText = QColor(0xFC, 0xBD, 0x2E);
    colors.granted = QColor(25, 195, 50);
    colors.segment = QColor(0x54, 0x50, 0x4B);
    colors.line = withOpacity(colors.text, 0.09);
    colors.track = withOpacity(Qt::white, 0.08);
    addSharedColors(colors);
    colors.operationalText = colors.operational;
    colors.degradedText = colors.degraded;
    colors.outageText = colors.outage;
    colors.unknownText = colors.secondary;
    return colors;
}

} // namespace

const ThemeColors &colorsOf(ColorScheme scheme) {
    static const ThemeColors light = lightColors();
    static const ThemeColors dark = darkColors();
    return scheme == ColorScheme::dark ? dark : light;
}

ColorScheme schemeOf(const QPalette &palette) {
    const auto luma = [&palette](QPalette::ColorRole role) {
        return qGray(palette.color(QPalette::Active, role).rgb());
    };
    return luma(QPalette::Window) < luma(QPalette::WindowText) ? ColorScheme::dark : ColorScheme::light;
}

const ThemeColors &colorsFor(const QWidget &widget) {
    return colorsOf(schemeOf(widget.palette()));
}

QColor withOpacity(QColor color, double share) {
    color.setAlphaF(color.alphaF() * static_cast<float>(share));
    return color;
}

void fillRounded(QPainter &painter, const QRectF &shape, double radius, const QColor &color) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(color);
    painter.drawRoundedRect(shape, radius, radius);
}

} // namespace burnwick
