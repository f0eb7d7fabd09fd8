// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// An opaque sRGB colour, components from 0 to 1.
struct RgbColor {
    double red = 0;
    double green = 0;
    double blue = 0;

    bool operator==(const RgbColor &) const = default;
};

/// "#rrggbb", for the markup of Pango, HTML and Qt.
[[nodiscard]] std::string hexOf(const RgbColor &color);

/// The colour of the status dot.
[[nodiscard]] RgbColor colorOf(StatusIndicator indicator) noexcept;

/// "green", "orange" or "red".
[[nodiscard]] std::string_view nameOf(StatusIndicator indicator) noexcept;

/// A part of the status title in one style.
struct TitleSegment {
    enum class Weight { regular, semibold, heavy };

    std::string text;
    Weight weight = Weight::regular;
    bool dimmed = false;           ///< in the bar's text colour at dimmedOpacity
    std::optional<RgbColor> color; ///< absent: the bar's own text colour

    bool operator==(const TitleSegment &) const = default;
};

/// The status title. Hosts that let the program choose the font size use statusTitlePixelSize.
using StatusTitle = std::vector<TitleSegment>;

inline constexpr double dimmedOpacity = 0.48;
inline constexpr int statusTitlePixelSize = 13;

/// Returns "1.2M | $4.50 | s67%  ●" in its styles, with "$--" without a cost, "s--" while the quota is
/// unknown, and a dimmed percentage if the quota is stale.
[[nodiscard]] StatusTitle buildStatusTitle(const SessionTokens &tokens, std::optional<double> cost,
                                           const std::optional<QuotaData> &quota, StatusIndicator indicator,
                                           bool isQuotaStale = false);
[[nodiscard]] StatusTitle buildStatusTitle(const Snapshot &snapshot);

/// The title's text without its styles.
[[nodiscard]] std::string plainText(const StatusTitle &title);

} // namespace burnwick
