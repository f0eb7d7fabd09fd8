// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <QString>

#include <cstdint>
#include <map>

namespace burnwick {

/// The tokens of all kinds on each active day; an active day may have 0.
using DailyActivity = std::map<LocalDay, std::int64_t>;

/// "Nov 21"
[[nodiscard]] QString dayText(LocalDay day);

/// "1,234,567 tokens", "1 token", "no tokens"
[[nodiscard]] QString exactTokensText(std::int64_t count);

/// "1.2M tokens", "1 token", "no tokens"
[[nodiscard]] QString roundedTokensText(std::int64_t count);

/// A chart's accessible text for the days from `first` to `last`: "61 active days, most on Nov 11 with 52.3M
/// tokens", or "no tokens". Of equal maxima it names the first.
[[nodiscard]] QString activitySummary(const DailyActivity &activity, LocalDay first, LocalDay last);

} // namespace burnwick
