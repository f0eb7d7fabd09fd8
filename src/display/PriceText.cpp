// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/PriceText.h"

#include "display/DisplayFormat.h"

namespace burnwick {

PricedTokens shownPrice(const UsageFigures &usage) {
    if (usage.figureChoice == FigureChoice::exact)
        return priceOf(usage.exactSession);
    return {usage.sessionTokens.total(), 0, usage.sessionCost};
}

PricedTokens priceOf(const SessionFigures &session) {
    return {session.tokens.total(), session.unpricedTokens, session.cost};
}

std::optional<double> costOf(const PricedTokens &price) {
    return price.hasPrice() ? std::optional(price.cost) : std::nullopt;
}

std::optional<double> shownCost(const UsageFigures &usage) {
    return costOf(shownPrice(usage));
}

std::optional<double> shownProjection(const UsageFigures &usage, double UsageFigures::*projection) {
    return shownCost(usage) ? std::optional(usage.*projection) : std::nullopt;
}

std::string priceText(const std::optional<double> &cost) {
    return cost ? costText(*cost) : "no price";
}

std::string priceText(const PricedTokens &price) {
    return priceText(costOf(price));
}

std::string unpricedText(const PricedTokens &price) {
    if (price.unpriced == 0)
        return {};
    return tokenCountText(price.unpriced) + (price.unpriced == 1 ? " token" : " tokens") + " with no price";
}

} // namespace burnwick
