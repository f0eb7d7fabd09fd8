// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/HistoricalData.h"

#include <array>
#include <string>
#include <string_view>

namespace burnwick {

/// A figure of the history as it reads on screen.
struct StatFigure {
    std::string_view label;
    std::string value; ///< may hold a model's name, which comes from outside: plain text

    bool operator==(const StatFigure &) const = default;
};

/// The twelve figures in the order in which they are shown, six to a row. `sessionCost` is the current
/// session's, in dollars; ends the program when the history's tokens overflow.
[[nodiscard]] std::array<StatFigure, 12> statFigures(const HistoricalData &history, double sessionCost);

} // namespace burnwick
