// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QFont>

namespace burnwick {

/// The sizes and weights of texts in the windows.
enum class TextStyle {
    small,          ///< 10 px: legends, dates along an axis
    smallStrong,    ///< 10 px, semibold: marks above a chart
    caption,        ///< 11 px: captions of figures, buttons
    captionStrong,  ///< 11 px, medium: a chart's name, badges
    sectionCaption, ///< 11 px, medium, spaced: a panel's name in capitals
    body,           ///< 12 px: labels of figures
    bodyStrong,     ///< 12 px, medium: figures in a line of text
    label,          ///< 13 px: rows and tabs
    labelStrong,    ///< 13 px, semibold: their figures, titles
    figure,         ///< 18 px, semibold: the figure of a tile
};

/// The desktop's font in that style; a widget with it follows later changes of the desktop's family. Digits
/// have equal widths if the family has them by default or, from Qt 6.7 on, as a feature.
[[nodiscard]] QFont fontOf(TextStyle style);

} // namespace burnwick
