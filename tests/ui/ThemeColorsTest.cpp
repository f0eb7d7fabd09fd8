// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/ThemeColors.h"

#include "support/PictureOf.h"
#include "ui/dashboard/AccountBar.h"
#include "ui/dashboard/StatusPill.h"
#include "ui/theme/TextStyle.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QLabel>

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
        EXPECT_GE(contrast(colors.text, colors.segment), legible) << "the checked segment";
    }
}

TEST(ThemeColors, ThePillIsLegibleInEachState) {
    AccountBar bar;
    auto *pill = bar.findChild<StatusPill *>();
    QFont large = pill->font();
    large.setPixelSize(60); // has pixels without antialiasing
    pill->setFont(large);
    for (const auto scheme : schemes) {
        bar.setPalette(paletteOf(scheme));
        for (const auto status : {OAuthStatus::unknown, OAuthStatus::connected, OAuthStatus::disconnected,
                                  OAuthStatus::expired, OAuthStatus::authenticating}) {
            bar.setStatus(status);
            pill->setGeometry(0, 0, pill->sizeHint().width(), bar.height());
            const QImage bars = test::pictureOf(bar);
            const QImage picture = bars.copy(pill->geometry()); // as laid out for the picture
            const int height = picture.height();
            const QColor ground = picture.pixelColor(height - 3, 1); // between dot and text
            EXPECT_NE(ground, colorsOf(scheme).bar);
            double best = 0;
            for (int y = 1; y < height - 1; ++y)
                for (int x = height; x < picture.width() - height; ++x)
                    best = std::max(best, contrast(picture.pixelColor(x, y), ground));
            EXPECT_GE(best, legible) << static_cast<int>(status) << " in " << static_cast<int>(scheme);
        }
    }
}

TEST(ThemeColors, MoreActivityIsDarker) {
    for (const auto scheme : schemes)
        EXPECT_TRUE(std::ranges::is_sorted(colorsOf(scheme).heat, std::greater(), relativeLuminance));
}

TEST(ThemeColors, OpacitiesAreMultiplied) {
    EXPECT_NEAR(withOpacity(Qt::red, 0.07).alphaF(), 0.07, 0.001);
    EXPECT_NEAR(withOpacity(withOpacity(Qt::red, 0.5), 0.5).alphaF(), 0.25, 0.001);
}

TEST(ThemePalette, TextsOfQtsWidgetsAreLegible) {
    using Pair = std::pair<QPalette::ColorRole, QPalette::ColorRole>;
    for (const auto scheme : schemes) {
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

TEST(ThemePalette, TheSchemeIsThatOfTheActiveWindowsColours) {
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
