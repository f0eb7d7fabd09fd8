// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/ThemeColors.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>

namespace burnwick {
namespace {

/// By WCAG 2: from 0 (black) to 1 (white).
double relativeLuminance(const QColor &color) {
    const auto linear = [](double component) {
        return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// By WCAG 2: from 1 to 21.
double contrast(const QColor &one, const QColor &other) {
    const auto [darker, lighter] = std::minmax({relativeLuminance(one), relativeLuminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

constexpr double legible = 4.5;

/// An opaque mix.
QColor over(const QColor &ground, const QColor &top) {
    const auto mix = [&top](float from, float to) { return from + (to - from) * top.alphaF(); };
    return QColor::fromRgbF(mix(ground.redF(), top.redF()), mix(ground.greenF(), top.greenF()),
                            mix(ground.blueF(), top.blueF()));
}

const ColorScheme schemes[] = {ColorScheme::light, ColorScheme::dark};

TEST(ThemeColors, TextIsLegibleOnEverySurface) {
    for (const auto scheme : schemes) {
        const ThemeColors &colors = colorsOf(scheme);
        for (const QColor &surface : {colors.window, colors.card, colors.bar})
            for (const QColor &text : {colors.text, colors.secondary, colors.link})
                EXPECT_GE(contrast(text, surface), legible)
                    << text.name().toStdString() << " on " << surface.name().toStdString();
        EXPECT_GE(contrast(colors.granted, over(colors.card, withOpacity(colors.granted, badgeOpacity))),
                  legible);
        EXPECT_GE(contrast(colors.secondary, over(colors.card, colors.track)), legible) << "a segment";
        for (const QColor &tone : {colors.overText, colors.nearText})
            EXPECT_GE(contrast(tone, colors.card), legible) << tone.name().toStdString();
        const QColor note = over(colors.card, colors.note);
        EXPECT_GE(contrast(colors.text, over(note, colors.pressed)), legible) << "a note's button";
        EXPECT_GE(contrast(colors.secondary, over(colors.card, colors.mark)), legible) << "no price";
        EXPECT_GE(contrast(colors.secondary, note), legible) << "a note's other button";
        EXPECT_GE(contrast(colors.text, colors.segment), legible) << "the checked segment";
    }
}

TEST(ThemeColors, MoreActivityIsDarker) {
    for (const auto scheme : schemes)
        EXPECT_TRUE(std::ranges::is_sorted(colorsOf(scheme).heat, std::greater(), relativeLuminance));
}

TEST(ThemePalette, EachRoleIsSetInEachGroup) {
    for (const auto scheme : schemes) {
        const QPalette palette = paletteOf(scheme);
        for (const auto group : {QPalette::Active, QPalette::Inactive, QPalette::Disabled})
            for (int role = 0; role < QPalette::NColorRoles; ++role)
                if (role != QPalette::NoRole) {
                    EXPECT_TRUE(palette.isBrushSet(group, static_cast<QPalette::ColorRole>(role)))
                        << group << ' ' << role;
                }
        EXPECT_NE(palette.color(QPalette::Disabled, QPalette::WindowText),
                  palette.color(QPalette::Active, QPalette::WindowText));
        EXPECT_EQ(schemeOf(palette), scheme);
    }
}

} // namespace
} // namespace burnwick
