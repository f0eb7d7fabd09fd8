// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/HistoricalData.h"
#include "model/Snapshot.h"

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// The label of the session's cost.
inline constexpr std::string_view sessionCostLabel = "Session Cost";

/// A figure of the history with its texts.
struct StatFigure {
    std::string_view label;
    std::string value; ///< plain text; may contain a model's name, which is untrusted

    bool operator==(const StatFigure &) const = default;
};

/// The twelve figures in display order, six to a row. `sessionCost` is the current session's, in dollars;
/// null if it has no price. Ends the program when the sum of the history's tokens overflows.
[[nodiscard]] std::array<StatFigure, 12> statFigures(const HistoricalData &history,
                                                     std::optional<double> sessionCost);

/// Returns the session's cost under both choices: "$12.40 as logged · $7.10 exact, at API prices", and
/// " · 1.2M tokens with no price" if the exact cost lacks some; without an exact cost if it lacks all.
[[nodiscard]] std::string sessionCostNote(const UsageFigures &usage);

} // namespace burnwick
