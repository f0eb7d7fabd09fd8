// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <array>
#include <chrono>

namespace burnwick {

/// The interval between readings of the local figures. The values are seconds, as in the settings file.
enum class RefreshRate : int { oneMin = 60, fiveMin = 300, tenMin = 600 };

/// Every rate, in the order of the picker.
inline constexpr std::array allRefreshRates{RefreshRate::oneMin, RefreshRate::fiveMin, RefreshRate::tenMin};

[[nodiscard]] constexpr qint64 rawValueOf(RefreshRate rate) noexcept {
    return static_cast<qint64>(rate);
}

[[nodiscard]] constexpr std::chrono::seconds intervalOf(RefreshRate rate) noexcept {
    return std::chrono::seconds(rawValueOf(rate));
}

/// Returns "1m", "5m" or "10m".
[[nodiscard]] inline QString labelOf(RefreshRate rate) {
    return QString::number(std::chrono::duration_cast<std::chrono::minutes>(intervalOf(rate)).count()) + u'm';
}

} // namespace burnwick
