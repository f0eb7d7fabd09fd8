// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/TimeFilter.h"

namespace burnwick {

std::string_view nameOf(TimeFilter filter) noexcept {
    constexpr std::string_view names[] = {"All", "30d", "7d"};
    return names[static_cast<std::size_t>(filter)];
}

std::optional<Instant> cutOffOf(TimeFilter filter, Instant now, const Calendar &calendar) {
    if (filter == TimeFilter::all)
        return std::nullopt;
    return calendar.daysBefore(now, filter == TimeFilter::thirtyDays ? 30 : 7);
}

} // namespace burnwick
