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

/// Every filter, in the order in which they are offered.
inline constexpr std::array allTimeFilters{TimeFilter::all, TimeFilter::thirtyDays, TimeFilter::sevenDays};

/// "All", "30d" or "7d".
[[nodiscard]] std::string_view nameOf(TimeFilter filter) noexcept;

/// Where the period begins: the same time of day 30 or 7 calendar days before `now`; none for `all`.
[[nodiscard]] std::optional<Instant> cutOffOf(TimeFilter filter, Instant now, const Calendar &calendar);

} // namespace burnwick
