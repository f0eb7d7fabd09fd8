// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/LogHistory.h"
#include "model/HistoricalData.h"
#include "model/TimeFilter.h"

#include <memory>
#include <vector>

namespace burnwick {

/// The sums of each file of a log history in one calendar, so that a change of one file costs the sums of
/// that file alone. Never modified once made, so that threads can share it.
class HistorySums {
public:
    /// Computes the sums of the files whose entries the last sums do not have. Terminates the program if one
    /// overflows.
    HistorySums(const LogHistory &history, const Calendar &calendar, const HistorySums *last = nullptr);

    [[nodiscard]] const Calendar &calendar() const noexcept { return m_calendar; }

    /// Returns the history of the entries in the filter's period before `now`. With `all` the sessions are
    /// the log files and the sessions without one, otherwise the distinct sessions of those entries.
    /// Terminates the program if a sum overflows.
    [[nodiscard]] HistoricalData within(TimeFilter filter, Instant now) const;

private:
    struct FileSums;

    Calendar m_calendar;
    std::size_t m_sessionCount;
    std::vector<std::shared_ptr<const FileSums>> m_files; ///< also of kept lists; null without entries
};

} // namespace burnwick
