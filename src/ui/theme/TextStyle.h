// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

namespace burnwick {

/// The sizes and weights of the text in the windows.
enum class TextStyle {
    small,          ///< 10 px: legends, dates along an axis
    caption,        ///< 11 px: the line below a figure or above it, buttons
    captionStrong,  ///< 11 px, medium: a chart's name, badges
    sectionCaption, ///< 11 px, medium, spaced: a panel's name, which is written in capitals
    body,           ///< 12 px: labels of figures
    bodyStrong,     ///< 12 px, medium: figures in a line of text
    label,          ///< 13 px: rows and tabs
    labelStrong,    ///< 13 px, semibold: their figures, titles
    figure,         ///< 18 px, semibold: the figure of a tile
};

/// The desktop's font in that style. A widget with this font follows the desktop to another family.
///
/// Its digits are of equal width where the family draws them so by itself, as DejaVu does; from Qt 6.7 on
/// also where the family has them as a feature, as Inter does.
[[nodiscard]] QFont fontOf(TextStyle style);

} // namespace burnwick
