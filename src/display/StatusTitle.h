// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"

#include <optional>
#include <string>
#include <vector>

namespace burnwick {

/// One stretch of the status title in one style.
struct TitleSegment {
    enum class Weight { regular, semibold, heavy };

    std::string text;
    Weight weight = Weight::regular;
    bool dimmed = false;           ///< the bar's text colour at dimmedOpacity
    std::optional<RgbColor> color; ///< absent: the bar's own text colour

    bool operator==(const TitleSegment &) const = default;
};

/// The status title, 13 px in every host that lets us choose.
using StatusTitle = std::vector<TitleSegment>;

inline constexpr double dimmedOpacity = 0.48;
inline constexpr int statusTitlePixelSize = 13;

/// "1.2M | $4.50 | s67%  ●" in its styles; "s--" while no quota is known.
[[nodiscard]] StatusTitle buildStatusTitle(const SessionTokens &tokens, double cost,
                                           const std::optional<QuotaData> &quota, StatusIndicator indicator);
[[nodiscard]] inline StatusTitle buildStatusTitle(const Snapshot &snapshot) {
    return buildStatusTitle(snapshot.usage.sessionTokens, snapshot.usage.sessionCost,
                            snapshot.account.quotaData, snapshot.account.statusIndicator());
}

/// The title's text without its styles.
[[nodiscard]] std::string plainText(const StatusTitle &title);

} // namespace burnwick
