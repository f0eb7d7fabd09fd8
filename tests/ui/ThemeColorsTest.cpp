// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/ThemeColors.h"

#include "support/PictureOf.h"
#include "ui/dashboard/AccountBar.h"
#include "ui/dashboard/StatusPill.h"
#include "ui/theme/TextStyle.h"
#include "ui/theme/ThemePalette.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>

#include <algorithm>
#include <cmath>
#include <functional>

namespace burnwick {
namespace {

/// Of WCAG 2: from 0 (black) to 1 (white).
double relativeLuminance(const QColor &color) {
    const auto linear = [](double component) {
        return component <= 0.04045 ? component / 12.92 : std::pow((component + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

/// Of WCAG 2: from 1 to 21.
double contrast(const QColor &one, const QColor &other) {
    const auto [darker, lighter] = std::minmax({relativeLuminance(one), relativeLuminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

constexpr double legible = 4.5;

TEST(ThemeColors, TextIsLegibleOnEverySurface) {
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        const ThemeColors &colors = colorsOf(scheme);
        for (const QColor &surface : {colors.window, colors.card, colors.bar})
            for (const QColor &text : {colors.text, colors.secondary, colors.link})
                EXPECT_GE(contrast(text, surface), legible)
                    << text.name().toStdString() << " on " << surface.name().toStdString();
    }
}

TEST(ThemeColors, TextIsLegibleOnWhatLiesOnACard) {
    const auto over = [](const QColor &ground, const QColor &top) {
        const auto mix = [&top](float from, float to) { return from + (to - from) * top.alphaF(); };
        return QColor::fromRgbF(mix(ground.redF(), top.redF()), mix(ground.greenF(), top.greenF()),
                                mix(ground.blueF(), top.blueF()));
    };
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        const ThemeColors &colors = colorsOf(scheme);
        EXPECT_GE(contrast(colors.granted, over(colors.card, withOpacity(colors.granted, badgeOpacity))),
                  legible);
        EXPECT_GE(contrast(colors.secondary, over(colors.card, colors.track)), legible) << "a segment";
        EXPECT_GE(contrast(colors.text, colors.segment), legible) << "the chosen one";
    }
}

TEST(ThemeColors, ThePillIsLegibleInEveryState) {
    AccountBar bar;
    auto *pill = bar.findChild<StatusPill *>();
    // Large enough for pixels that are all of the text.
    QFont large = pill->font();
    large.setPixelSize(60);
    pill->setFont(large);
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        bar.setPalette(paletteOf(scheme));
        for (const auto status : {OAuthStatus::unknown, OAuthStatus::connected, OAuthStatus::disconnected,
                                  OAuthStatus::expired, OAuthStatus::authenticating}) {
            bar.setStatus(status);
            pill->setGeometry(0, 0, pill->sizeHint().width(), bar.height());
            const QImage picture = test::pictureOf(bar).copy(pill->geometry());
            const QColor ground = picture.pixelColor(pill->height() - 3, 1); // between the dot and the text
            EXPECT_NE(ground, colorsOf(scheme).bar);
            double best = 0;
            const QRect inside = picture.rect().adjusted(pill->height(), 1, -pill->height(), -1);
            for (int y = inside.top(); y <= inside.bottom(); ++y)
                for (int x = inside.left(); x <= inside.right(); ++x)
                    best = std::max(best, contrast(picture.pixelColor(x, y), ground));
            EXPECT_GE(best, legible) << static_cast<int>(status) << " in " << static_cast<int>(scheme);
        }
    }
}

TEST(ThemeColors, MoreActivityIsDarker) {
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark})
        EXPECT_TRUE(std::ranges::is_sorted(colorsOf(scheme).heat, std::greater(), relativeLuminance));
}

TEST(ThemeColors, OpacityIsAShareOfTheOpacityThatIsThere) {
    EXPECT_NEAR(withOpacity(Qt::red, 0.07).alphaF(), 0.07, 0.001);
    EXPECT_NEAR(withOpacity(withOpacity(Qt::red, 0.5), 0.5).alphaF(), 0.25, 0.001);
}

TEST(ThemePalette, WhatQtDrawsIsLegible) {
    using Pair = std::pair<QPalette::ColorRole, QPalette::ColorRole>;
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
        const QPalette palette = paletteOf(scheme);
        for (const auto group : {QPalette::Active, QPalette::Inactive})
            for (const auto &[text, ground] : {Pair{QPalette::WindowText, QPalette::Window},
                                               {QPalette::Text, QPalette::Base},
                                               {QPalette::Text, QPalette::AlternateBase},
                                               {QPalette::ButtonText, QPalette::Button},
                                               {QPalette::ToolTipText, QPalette::ToolTipBase},
                                               {QPalette::HighlightedText, QPalette::Highlight},
                                               {QPalette::BrightText, QPalette::Dark},
                                               {QPalette::PlaceholderText, QPalette::Base},
                                               {QPalette::Link, QPalette::Base},
                                               {QPalette::LinkVisited, QPalette::Base}})
                EXPECT_GE(contrast(palette.color(group, text), palette.color(group, ground)), legible)
                    << text << " on " << ground << ", dark: " << (scheme == ColorScheme::dark);
    }
}

TEST(ThemePalette, NoRoleIsLeftToThePlatform) {
    for (const auto scheme : {ColorScheme::light, ColorScheme::dark}) {
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

TEST(ThemePalette, AnyPaletteIsLightOrDark) {
    const struct {
        QColor window, text;
        ColorScheme scheme;
    } rows[] = {
        {Qt::white, Qt::black, ColorScheme::light},
        {QColor(0xEF, 0xEF, 0xEF), Qt::black, ColorScheme::light},
        {QColor(0x2A, 0x2E, 0x32), QColor(0xFC, 0xFC, 0xFC), ColorScheme::dark},
        {QColor(0x60, 0x60, 0xFF), Qt::black, ColorScheme::light},
        {QColor(0x60, 0x60, 0xFF), Qt::white, ColorScheme::dark},
        {Qt::gray, Qt::gray, ColorScheme::light},
    };
    for (const auto &row : rows) {
        QPalette palette(row.window);
        palette.setColor(QPalette::WindowText, row.text);
        // The window in front decides.
        palette.setColor(QPalette::Disabled, QPalette::Window, row.text);
        palette.setCurrentColorGroup(QPalette::Disabled);
        EXPECT_EQ(schemeOf(palette), row.scheme) << row.window.name().toStdString();
    }
}

TEST(TextStyle, AWidgetKeepsItsSizeAndFollowsTheFamily) {
    const QFont before = QApplication::font();
    QLabel label;
    label.setFont(fontOf(TextStyle::figure));
    QFont other(QStringLiteral("Some Family"));
    other.setPixelSize(40);
    other.setWeight(QFont::Thin);
    QApplication::setFont(other);
    QCoreApplication::processEvents();
    EXPECT_EQ(label.font().family(), other.family());
    EXPECT_EQ(label.font().pixelSize(), 18);
    EXPECT_EQ(label.font().weight(), QFont::DemiBold);
    QApplication::setFont(before);
}

} // namespace
} // namespace burnwick
