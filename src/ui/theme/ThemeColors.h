// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>
#include <QPalette>

#include <array>

class QPainter;
class QRectF;
class QWidget;

namespace burnwick {

enum class ColorScheme { light, dark };

/// The colours of one scheme, by role. The translucent ones suit all surfaces.
struct ThemeColors {
    /// @name Surfaces
    QColor window; ///< a window's background
    QColor card;   ///< cards and tiles
    QColor bar;    ///< the account bar

    /// @name Text: `text`, `secondary` and `link` have a contrast of at least 4.5:1 on each surface
    QColor text;
    QColor secondary; ///< labels, captions, axes
    QColor tertiary;  ///< low contrast: the version, disabled text
    QColor inactive;  ///< unchecked tabs and filters
    QColor link;      ///< the accent, as text
    QColor overText;  ///< a limit that will be full early; 4.5:1 on a card
    QColor nearText;  ///< one that may be; 4.5:1 on a card
    QColor granted;   ///< the badge "Enabled"; 4.5:1 on a tint of itself on a card

    /// @name Text on a tint of the state's colour on the account bar, with a contrast of at least 4.5:1
    QColor operationalText;
    QColor degradedText;
    QColor outageText;
    QColor unknownText; ///< on a tint of `secondary`

    /// @name Translucent shapes
    QColor line;      ///< separators, guide lines, outlines
    QColor track;     ///< behind bars
    QColor axis;      ///< the base line of a small chart
    QColor mark;      ///< behind a remark in place of a figure
    QColor hover;     ///< a button; a tab or a filter under the pointer
    QColor note;      ///< a remark inside a card
    QColor selected;  ///< the checked tab or filter
    QColor pressed;   ///< a button held down
    QColor emptyCell; ///< a day without activity
    QColor switchOff; ///< the track of a switch that is off

    /// @name Solid shapes
    QColor segment; ///< the checked segment of a picker

    /// @name The same in both schemes
    QColor accent;              ///< model bars, extra usage, switches, focus ring
    QColor good;                ///< usage bars and the status dot: indicator green
    QColor near;                ///< indicator orange
    QColor over;                ///< indicator red
    QColor operational;         ///< an operational service, a valid login
    QColor degraded;            ///< a degraded service, a login in progress
    QColor outage;              ///< a service with an outage, no valid login
    std::array<QColor, 4> heat; ///< days with activity, from little to much
};

/// The opacity of a badge's background, in the badge's own colour.
inline constexpr double badgeOpacity = 0.15;

/// Lives as long as the program.
[[nodiscard]] const ThemeColors &colorsOf(ColorScheme scheme);

/// The application's palette with every role in every group. Base is the card, AlternateBase the bar,
/// WindowText and Text the text, PlaceholderText the secondary text; the group Disabled has the tertiary
/// text.
[[nodiscard]] QPalette paletteOf(ColorScheme scheme);

/// Dark when the palette's windows are darker than their text.
[[nodiscard]] ColorScheme schemeOf(const QPalette &palette);

/// The colours for the widget's own painting, by its current palette. Nothing is cached, so a widget needs no
/// handler for QEvent::PaletteChange: Qt repaints it.
[[nodiscard]] const ThemeColors &colorsFor(const QWidget &widget);

/// The colour with its opacity multiplied by `share` (0 to 1).
[[nodiscard]] QColor withOpacity(QColor color, double share);

/// Fills an antialiased rectangle with round corners, without an outline. Changes the painter's pen, brush
/// and hints.
void fillRounded(QPainter &painter, const QRectF &shape, double radius, const QColor &color);

} // namespace burnwick
