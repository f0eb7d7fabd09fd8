// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/theme/ColorScheme.h"

#include <QColor>

#include <array>

class QPalette;
class QWidget;

namespace burnwick {

/// The colours of one scheme by what they are used for. The translucent ones suit each of the surfaces.
struct ThemeColors {
    /// @name Surfaces
    QColor window; ///< the ground of a window
    QColor card;   ///< cards, tiles and rows upon it
    QColor bar;    ///< the account bar

    /// @name Text: `text`, `secondary` and `link` have a contrast of 4.5 to 1 on each surface at least
    QColor text;
    QColor secondary; ///< labels, captions, axes
    QColor tertiary;  ///< what nobody misses: the version, placeholders
    QColor inactive;  ///< tabs and filters that are not chosen
    QColor link;      ///< the accent, as text
    QColor granted; ///< the badge of what the user allowed; as legible on `badgeOpacity` of itself on a card

    /// @name Text on a tint of the colour of that state on the account bar; with a contrast of 4.5 to 1
    QColor operationalText;
    QColor degradedText;
    QColor outageText;
    QColor unknownText; ///< on a tint of `secondary`

    /// @name Translucent shapes
    QColor line;      ///< separators, guide lines, outlines
    QColor track;     ///< behind bars
    QColor hover;     ///< a button at rest; a tab or a filter under the pointer
    QColor selected;  ///< the chosen tab or filter
    QColor pressed;   ///< a button held down
    QColor emptyCell; ///< a day without activity
    QColor switchOff; ///< the ground of a switch that is off

    /// @name Solid shapes
    QColor segment; ///< the chosen one of several on a track

    /// @name The same in both schemes
    QColor accent;              ///< model bars, extra usage, switches, focus ring
    QColor good;                ///< usage bars and the status dot, far from the limit
    QColor near;                ///< ... close to it
    QColor over;                ///< ... at it
    QColor operational;         ///< a service that works, a login that holds
    QColor degraded;            ///< a service in trouble, a login on its way
    QColor outage;              ///< a service that is down, a login that is gone
    std::array<QColor, 4> heat; ///< days with activity, from little to much
};

/// What share of a badge's colour its ground has.
inline constexpr double badgeOpacity = 0.15;

/// Lives as long as the program.
[[nodiscard]] const ThemeColors &colorsOf(ColorScheme scheme);

/// Dark when the palette's windows are darker than the text upon them.
[[nodiscard]] ColorScheme schemeOf(const QPalette &palette);

/// What a widget draws itself with. Nothing is kept anywhere: it holds for a widget that was never shown as
/// for one that gets a QEvent::PaletteChange, so that such a widget has but to repaint then, as Qt lets it.
[[nodiscard]] const ThemeColors &colorsFor(const QWidget &widget);

/// The colour, at that share of its opacity (0 to 1).
[[nodiscard]] QColor withOpacity(QColor color, double share);

} // namespace burnwick
