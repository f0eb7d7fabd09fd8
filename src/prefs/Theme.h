// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>

namespace burnwick {

/// The appearance of the windows; `system` follows the desktop.
enum class Theme { light, dark, system };

/// Every theme, in the order of the picker.
inline constexpr std::array allThemes{Theme::light, Theme::dark, Theme::system};

/// Returns "light", "dark" or "system", as in the settings file.
[[nodiscard]] inline QString rawValueOf(Theme theme) {
    return theme == Theme::light  ? QStringLiteral("light")
           : theme == Theme::dark ? QStringLiteral("dark")
                                  : QStringLiteral("system");
}

/// Returns "Light", "Dark" or "System".
[[nodiscard]] inline QString labelOf(Theme theme) {
    QString label = rawValueOf(theme);
    label[0] = label[0].toUpper();
    return label;
}

} // namespace burnwick
