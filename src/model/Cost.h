// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/SessionTokens.h"

namespace burnwick {

/// Returns the cost of the tokens in US dollars. All models have the same prices.
[[nodiscard]] double sessionCost(const SessionTokens &tokens) noexcept;

/// The costs at a constant burn rate, in US dollars.
struct ProjectedCosts {
    double today = 0; ///< 24 hours at the rate, whatever the time of day
    double week = 0;
    double month = 0;

    bool operator==(const ProjectedCosts &) const = default;
};

/// Returns the costs at that rate; all 0 unless it is above 0.
[[nodiscard]] ProjectedCosts projectedCosts(double burnRateTokensPerMin) noexcept;

} // namespace burnwick
