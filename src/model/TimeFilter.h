// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"
#include "model/Instant.h"

#include <array>
#include <optional>
#include <string_view>

namespace burnwick {

/// The period over which the history is computed.
enum class TimeFilter { all, thirtyDays, sevenDays };

/// Every filter, in the order of the buttons.
inline constexpr std::array allTimeFilters{TimeFilter::all, TimeFilter::thirtyDays, TimeFilter::sevenDays};

/// "All", "30d" or "7d".
[[nodiscard]] std::string_view nameOf(TimeFilter filter) noexcept;

/// Returns the start of the period: the same time of day 30 or 7 calendar days before `now`; null for `all`.
[[nodiscard]] std::optional<Instant> cutOffOf(TimeFilter filter, Instant now, const Calendar &calendar);

} // namespace burnwick
