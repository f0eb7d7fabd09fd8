// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/ThemeColors.h"

namespace burnwick {

namespace {

/// An opaque mix: Qt's style derives shades from the palette, which lose opacity.
QColor blend(const QColor &ground, const QColor &top, double share) {
    const auto mix = [share](int from, int to) { return qRound(from + (to - from) * share); };
    return {mix(ground.red(), top.red()), mix(ground.green(), top.green()), mix(ground.blue(), top.blue())};
}

void setTextRoles(QPalette &palette, QPalette::ColorGroup group, const QColor &color) {
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::BrightText,
                            QPalette::HighlightedText, QPalette::ToolTipText})
        palette.setColor(group, role, color);
}

} // namespace

QPalette paletteOf(ColorScheme scheme) {
    const ThemeColors &colors = colorsOf(scheme);
    const bool dark = scheme == ColorScheme::dark;
    const QColor button = blend(colors.card, colors.text, 0.04);

    QPalette palette;
    const auto set = [&palette](QPalette::ColorRole role, const QColor &color) {
        palette.setColor(QPalette::All, role, color);
    };
    setTextRoles(palette, QPalette::All, colors.text);
    set(QPalette::PlaceholderText, colors.secondary);
    set(QPalette::Link, colors.link);
    set(QPalette::LinkVisited, blend(colors.link, colors.secondary, 0.5));

    set(QPalette::Window, colors.window);
    set(QPalette::Base, colors.card);
    set(QPalette::AlternateBase, colors.bar);
    set(QPalette::ToolTipBase, colors.card);
    set(QPalette::Button, button);
    // A mix, because text on the pure accent has too little contrast.
    set(QPalette::Highlight, blend(colors.card, colors.accent, 0.4));
#if QT_VERSION >= QT_VERSION_CHECK(6, 6, 0)
    set(QPalette::Accent, colors.accent);
#endif

    // The edges of reliefs, from the lightest to the darkest.
    set(QPalette::Light, blend(button, Qt::white, dark ? 0.12 : 0.8));
    set(QPalette::Midlight, blend(button, Qt::white, dark ? 0.06 : 0.4));
    set(QPalette::Mid, blend(button, Qt::black, dark ? 0.2 : 0.15));
    set(QPalette::Dark, blend(button, Qt::black, dark ? 0.35 : 0.3));
    set(QPalette::Shadow, blend(button, Qt::black, dark ? 0.6 : 0.5));

    setTextRoles(palette, QPalette::Disabled, colors.tertiary);
    palette.setColor(QPalette::Disabled, QPalette::PlaceholderText, colors.tertiary);
    palette.setColor(QPalette::Disabled, QPalette::Link, colors.tertiary);
    palette.setColor(QPalette::Disabled, QPalette::LinkVisited, colors.tertiary);
    palette.setColor(QPalette::Disabled, QPalette::Highlight, blend(colors.card, colors.text, 0.10));
    return palette;
}

} // namespace burnwick
