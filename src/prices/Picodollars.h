// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstdint>
#include <limits>

namespace burnwick {

/// An amount of US dollars in units of 1e-12 dollars: sums of it do not depend on their order.
using Picodollars = std::int64_t;

/// Returns the sum of two amounts, neither below 0; at most 9.2 million dollars.
[[nodiscard]] inline Picodollars addAmounts(Picodollars a, Picodollars b) noexcept {
    Picodollars sum = 0;
    return __builtin_add_overflow(a, b, &sum) ? std::numeric_limits<Picodollars>::max() : sum;
}

[[nodiscard]] inline double dollarsOf(Picodollars amount) noexcept {
    return static_cast<double>(amount) / 1e12;
}

} // namespace burnwick
