// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <array>

namespace burnwick {

/// How tokens are counted and priced.
enum class FigureChoice {
    asLogged, ///< each line of the logs, at one price for all models
    exact     ///< each message once, at its model's price
};

/// Every choice, in the order of the picker.
inline constexpr std::array allFigureChoices{FigureChoice::asLogged, FigureChoice::exact};

} // namespace burnwick
