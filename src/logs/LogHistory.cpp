// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogHistory.h"

#include <algorithm>

namespace burnwick {

std::span<const LogEntries> LogHistory::entriesSince(Instant instant) const {
    const auto first = std::ranges::partition_point(
        files, [instant](const LogFile &file) { return !isModifiedSince(file, instant); });
    return std::span(entries).subspan(static_cast<std::size_t>(first - files.begin()));
}

} // namespace burnwick
