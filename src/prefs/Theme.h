// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>

namespace burnwick {

/// The appearance of the program's windows; `system` follows the desktop.
enum class Theme { light, dark, system };

/// Every theme, in the order in which they are offered.
inline constexpr std::array allThemes{Theme::light, Theme::dark, Theme::system};

/// "light", "dark" or "system", as the settings file has it.
[[nodiscard]] QString rawValueOf(Theme theme);
/// "Light", "Dark" or "System".
[[nodiscard]] QString labelOf(Theme theme);

} // namespace burnwick
