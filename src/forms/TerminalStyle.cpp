// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "forms/TerminalStyle.h"

#include <cmath>

namespace burnwick {

namespace {

std::string_view orEmpty(const char *text) noexcept {
    return text != nullptr ? std::string_view(text) : std::string_view();
}

std::string rendition(std::string_view parameters, std::string_view text, TerminalColors colors) {
    if (colors == TerminalColors::none || parameters.empty())
        return std::string(text);
    std::string sequence = "\033[";
    return sequence.append(parameters).append("m").append(text).append("\033[0m");
}

std::string colorParameters(StatusIndicator indicator, const RgbColor &color, TerminalColors colors) {
    if (colors == TerminalColors::full) {
        std::string parameters = "38;2";
        for (const double component : {color.red, color.green, color.blue})
            parameters += ';' + std::to_string(std::lround(component * 255));
        return parameters;
    }
    switch (indicator) {
    case StatusIndicator::orange:
        return "33"; // yellow, the nearest of the palette
    case StatusIndicator::red:
        return "31";
    case StatusIndicator::green:
        break;
    }
    return "32";
}

} // namespace

TerminalColors terminalColorsFor(bool isTerminal, const char *noColor, const char *term,
                                 const char *colorTerm) noexcept {
    const std::string_view terminal = orEmpty(term);
    if (!isTerminal || !orEmpty(noColor).empty() || terminal.empty() || terminal == "dumb")
        return TerminalColors::none;
    const std::string_view depth = orEmpty(colorTerm);
    return depth == "truecolor" || depth == "24bit" ? TerminalColors::full : TerminalColors::basic;
}

std::string bold(std::string_view printable, TerminalColors colors) {
    return rendition("1", printable, colors);
}

std::string dim(std::string_view printable, TerminalColors colors) {
    return rendition("2", printable, colors);
}

std::string styledTitle(const StatusTitle &title, StatusIndicator indicator, TerminalColors colors) {
    std::string text;
    for (const TitleSegment &segment : title) {
        if (segment.color)
            text += rendition(colorParameters(indicator, *segment.color, colors), segment.text, colors);
        else if (segment.dimmed)
            text += dim(segment.text, colors);
        else if (segment.weight != TitleSegment::Weight::regular)
            text += bold(segment.text, colors);
        else
            text += segment.text;
    }
    return text;
}

} // namespace burnwick
