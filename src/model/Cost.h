// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/SessionTokens.h"

namespace burnwick {

/// What the tokens cost in dollars, at one price table for every model.
[[nodiscard]] double sessionCost(const SessionTokens &tokens) noexcept;

/// Dollars if the current burn rate went on.
struct ProjectedCosts {
    double today = 0; ///< 24 hours at the rate, whatever the time of day
    double week = 0;
    double month = 0;

    bool operator==(const ProjectedCosts &) const = default;
};

/// From tokens per minute; all zero unless the rate is above 0.
[[nodiscard]] ProjectedCosts projectedCosts(double burnRateTokensPerMin) noexcept;

} // namespace burnwick
