// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/StatusTitle.h"

#include "display/DisplayFormat.h"

#include <algorithm>

namespace burnwick {

namespace {

constexpr auto regular = TitleSegment::Weight::regular;
constexpr auto semibold = TitleSegment::Weight::semibold;
constexpr auto heavy = TitleSegment::Weight::heavy;

bool isLetter(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

} // namespace

StatusTitle buildStatusTitle(const SessionTokens &tokens, double cost, const std::optional<QuotaData> &quota,
                             StatusIndicator indicator) {
    StatusTitle title;
    const auto add = [&title](std::string text, TitleSegment::Weight weight, bool dimmed = false) {
        title.push_back({std::move(text), weight, dimmed, std::nullopt});
    };

    const std::string total = tokenCountText(tokens.total());
    const auto unit = std::find_if(total.begin(), total.end(), isLetter);
    add(std::string(total.begin(), unit), semibold);
    if (unit != total.end())
        add(std::string(unit, total.end()), regular);

    add(" | ", regular, true);
    std::string costFigure = costText(cost);
    if (costFigure.starts_with('$')) {
        add("$", regular);
        costFigure.erase(0, 1);
    }
    add(std::move(costFigure), semibold);

    add(" | ", regular, true);
    add("s", semibold, true);
    add(quota ? percentText(quota->fiveHourUsagePct) : "--", heavy);
    add("  ", regular);
    title.push_back({"\u25CF", heavy, false, colorOf(indicator)});
    return title;
}

std::string plainText(const StatusTitle &title) {
    std::string text;
    for (const TitleSegment &segment : title)
        text += segment.text;
    return text;
}

} // namespace burnwick
