// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/QuotaData.h"

#include <optional>
#include <string>
#include <string_view>

namespace burnwick {

/// How close the 5-hour window is to its limit.
enum class StatusIndicator { green, orange, red };

/// An opaque sRGB colour, components from 0 to 1.
struct RgbColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const RgbColor &) const = default;
};

/// "#rrggbb", as the markup of Pango, HTML and Qt has it.
[[nodiscard]] std::string hexOf(const RgbColor &color);

/// Green below 41 %, orange from 41 %, red from 81 %.
[[nodiscard]] StatusIndicator statusIndicatorForUsage(double usagePct) noexcept;

/// Of the 5-hour window; green without a snapshot.
[[nodiscard]] StatusIndicator statusIndicatorFor(const std::optional<QuotaData> &quota) noexcept;

/// The colour of the status dot.
[[nodiscard]] RgbColor colorOf(StatusIndicator indicator) noexcept;

/// "green", "orange" or "red".
[[nodiscard]] std::string_view nameOf(StatusIndicator indicator) noexcept;

} // namespace burnwick
