// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"

#include <optional>
#include <string>

/// Costs of tokens of which some may have no price.
namespace burnwick {

/// Returns the price of the session's shown figures. As logged, all tokens have one.
[[nodiscard]] PricedTokens shownPrice(const UsageFigures &usage);
[[nodiscard]] PricedTokens priceOf(const SessionFigures &session);

/// Returns the cost in US dollars; null if the price list has none.
[[nodiscard]] std::optional<double> costOf(const PricedTokens &price);
/// Returns the cost of the session's shown figures in US dollars; null if the price list has none.
[[nodiscard]] std::optional<double> shownCost(const UsageFigures &usage);
/// Returns the projection of that cost; null without a cost.
[[nodiscard]] std::optional<double> shownProjection(const UsageFigures &usage,
                                                    double UsageFigures::*projection);

/// Returns "$12.35", or "no price" for null.
[[nodiscard]] std::string priceText(const std::optional<double> &cost);
[[nodiscard]] std::string priceText(const PricedTokens &price);
[[nodiscard]] inline std::string projectionText(const UsageFigures &usage, double UsageFigures::*projection) {
    return priceText(shownProjection(usage, projection));
}
/// Returns "7.1M tokens with no price"; empty if all have one.
[[nodiscard]] std::string unpricedText(const PricedTokens &price);

} // namespace burnwick
