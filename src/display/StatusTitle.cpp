// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/StatusTitle.h"

#include "display/DisplayFormat.h"
#include "display/PriceText.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

namespace burnwick {

std::string hexOf(const RgbColor &color) {
    const auto component = [](double value) { return static_cast<unsigned>(std::lround(value * 255)); };
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", component(color.red), component(color.green),
                  component(color.blue));
    return text.data();
}

RgbColor colorOf(StatusIndicator indicator) noexcept {
    switch (indicator) {
    case StatusIndicator::orange:
        return {0.99, 0.74, 0.18};
    case StatusIndicator::red:
        return {1.0, 0.27, 0.23};
    case StatusIndicator::green:
        break;
    }
    return {0.2, 0.78, 0.35};
}

std::string_view nameOf(StatusIndicator indicator) noexcept {
    switch (indicator) {
    case StatusIndicator::orange:
        return "orange";
    case StatusIndicator::red:
        return "red";
    case StatusIndicator::green:
        break;
    }
    return "green";
}

StatusTitle buildStatusTitle(const SessionTokens &tokens, std::optional<double> cost,
                             const std::optional<QuotaData> &quota, StatusIndicator indicator,
                             bool isQuotaStale) {
    using enum TitleSegment::Weight;
    StatusTitle title;
    const auto add = [&title](std::string text, TitleSegment::Weight weight, bool dimmed = false) {
        title.push_back({std::move(text), weight, dimmed, std::nullopt});
    };

    const std::string total = tokenCountText(tokens.total());
    const std::size_t unit = std::min(total.find_first_of("KM"), total.size());
    add(total.substr(0, unit), semibold);
    if (unit < total.size())
        add(total.substr(unit), regular);

    add(" | ", regular, true);
    add("$", regular);
    add(cost ? costText(*cost).substr(1) : "--", semibold);

    add(" | ", regular, true);
    add("s", semibold, true);
    add(quota ? percentText(quota->fiveHourUsagePct) : "--", heavy, quota && isQuotaStale);
    add("  ", regular);
    title.push_back({"\u25CF", heavy, false, colorOf(indicator)});
    return title;
}

StatusTitle buildStatusTitle(const Snapshot &snapshot) {
    const auto &[usage, account] = snapshot;
    return buildStatusTitle(usage.sessionTokens, shownCost(usage), account.quotaData,
                            account.statusIndicator(), account.isQuotaStale);
}

std::string plainText(const StatusTitle &title) {
    std::string text;
    for (const TitleSegment &segment : title)
        text += segment.text;
    return text;
}

} // namespace burnwick
