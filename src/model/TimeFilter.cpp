// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/TimeFilter.h"

namespace burnwick {

std::string_view nameOf(TimeFilter filter) noexcept {
    switch (filter) {
    case TimeFilter::thirtyDays:
        return "30d";
    case TimeFilter::sevenDays:
        return "7d";
    case TimeFilter::all:
        break;
    }
    return "All";
}

std::optional<Instant> cutOffOf(TimeFilter filter, Instant now, const Calendar &calendar) {
    switch (filter) {
    case TimeFilter::thirtyDays:
        return calendar.daysBefore(now, 30);
    case TimeFilter::sevenDays:
        return calendar.daysBefore(now, 7);
    case TimeFilter::all:
        break;
    }
    return std::nullopt;
}

} // namespace burnwick
