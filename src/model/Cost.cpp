// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Cost.h"

namespace burnwick {

double sessionCost(const SessionTokens &tokens) noexcept {
    // Dollars per million tokens.
    constexpr double inputPrice = 3.0;
    constexpr double outputPrice = 15.0;
    constexpr double cacheCreationPrice = 3.75;
    constexpr double cacheReadPrice = 0.3;
    const auto millions = [](std::int64_t count) { return static_cast<double>(count) / 1e6; };
    return millions(tokens.input) * inputPrice + millions(tokens.output) * outputPrice +
           millions(tokens.cacheCreation) * cacheCreationPrice + millions(tokens.cacheRead) * cacheReadPrice;
}

ProjectedCosts projectedCosts(double burnRateTokensPerMin) noexcept {
    // An average over all kinds of tokens; deliberately not derived from the prices above.
    constexpr double dollarsPerToken = 9e-6;
    if (!(burnRateTokensPerMin > 0))
        return {};
    const double today = burnRateTokensPerMin * dollarsPerToken * 60.0 * 24.0;
    return {today, today * 7.0, today * 30.0};
}

} // namespace burnwick
