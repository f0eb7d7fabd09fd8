// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/theme/TextStyle.h"

namespace burnwick {

namespace {

struct Measures {
    int pixelSize;
    QFont::Weight weight;
};

constexpr Measures measuresOf(TextStyle style) {
    switch (style) {
    case TextStyle::small:
        return {10, QFont::Normal};
    case TextStyle::smallStrong:
        return {10, QFont::DemiBold};
    case TextStyle::caption:
        return {11, QFont::Normal};
    case TextStyle::captionStrong:
    case TextStyle::sectionCaption:
        return {11, QFont::Medium};
    case TextStyle::body:
        return {12, QFont::Normal};
    case TextStyle::bodyStrong:
        return {12, QFont::Medium};
    case TextStyle::labelStrong:
        return {13, QFont::DemiBold};
    case TextStyle::figure:
        return {18, QFont::DemiBold};
    case TextStyle::label:
        break;
    }
    return {13, QFont::Normal};
}

} // namespace

QFont fontOf(TextStyle style) {
    // Widgets inherit unset attributes from the application's font, also after it changes.
    QFont font;
    const Measures measures = measuresOf(style);
    font.setPixelSize(measures.pixelSize);
    font.setWeight(measures.weight);
    if (style == TextStyle::sectionCaption)
        font.setLetterSpacing(QFont::AbsoluteSpacing, 0.6);
#if QT_VERSION >= QT_VERSION_CHECK(6, 7, 0)
    font.setFeature(QFont::Tag("tnum"), 1);
#endif
    return font;
}

} // namespace burnwick
