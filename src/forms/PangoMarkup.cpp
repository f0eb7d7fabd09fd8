// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/PangoMarkup.h"

#include "display/DisplayFormat.h"

namespace burnwick {

namespace {

/// By number: older Pango knows no name for semibold.
std::string weightAttribute(TitleSegment::Weight weight) {
    switch (weight) {
    case TitleSegment::Weight::semibold:
        return " weight=\"600\"";
    case TitleSegment::Weight::heavy:
        return " weight=\"900\"";
    case TitleSegment::Weight::regular:
        break;
    }
    return {};
}

std::string attributesOf(const TitleSegment &segment) {
    std::string attributes = weightAttribute(segment.weight);
    if (segment.color)
        attributes += " foreground=\"" + hexOf(*segment.color) + '"';
    if (segment.dimmed)
        attributes += " alpha=\"" + percentText(dimmedOpacity * 100) + '"';
    return attributes;
}

} // namespace

std::string escapedForPango(std::string_view text) {
    std::string escaped;
    for (const char c : text) {
        switch (c) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += c;
        }
    }
    return escaped;
}

std::string pangoTitle(const StatusTitle &title) {
    std::string markup;
    for (const TitleSegment &segment : title) {
        const std::string attributes = attributesOf(segment);
        const std::string text = escapedForPango(segment.text);
        markup += attributes.empty() ? text : "<span" + attributes + '>' + text + "</span>";
    }
    return markup;
}

std::string pangoToolTip(const SessionFigures &session) {
    const SessionTokens &tokens = session.tokens;
    const std::string quota =
        session.quota ? percentText(session.quota->fiveHourUsagePct) + " used" : "not known";
    const std::string lines[] = {
        "Tokens: " + tokenCountText(tokens.total()),
        "  " + tokenCountText(tokens.input) + " in · " + tokenCountText(tokens.output) + " out",
        "  " + tokenCountText(tokens.cacheCreation) + " cache creation · " +
            tokenCountText(tokens.cacheRead) + " cache read",
        "Cost: " + costText(session.cost),
        "Burn rate: " + burnRateText(session.burnRateTokensPerMin),
        "Projected: " + costText(session.projected.today) + " today · " + costText(session.projected.week) +
            " week · " + costText(session.projected.month) + " month",
        "5-hour window: " + quota + " (" + std::string(nameOf(session.indicator())) + ")",
    };
    std::string toolTip = "<b>Burnwick</b>";
    for (const std::string &line : lines)
        toolTip += '\n' + escapedForPango(line);
    return toolTip;
}

} // namespace burnwick
