// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "breakdown/ExactCounting.h"
#include "logs/HistorySums.h"
#include "logs/JSONLParser.h"
#include "model/Snapshot.h"

#include <span>

namespace burnwick {

/// Returns the instant since which a file counts as recent: the same local time of yesterday.
[[nodiscard]] Instant recentSince(const Calendar &calendar, Instant now);

/// Sets the session's figures, of both choices, from the entries of the recent files. Terminates the program
/// when a sum overflows.
void updateSession(UsageFigures &figures, std::span<const LogEntries> recentEntries, ExactCounting &counting,
                   Instant readAt);

/// Sets the shown figures of the session to those of the choice.
void showSession(UsageFigures &figures);

/// Sets the time of the oldest log and the numbers of kept sessions and messages.
void updateLogs(UsageFigures &figures, const LogHistory &history);

/// Sets the history of the figures' period and choice. Both sums are those of their calendar. Terminates the
/// program when a sum overflows.
void updateHistory(UsageFigures &figures, const HistorySums &sums, const BreakdownSums &exactSums,
                   Instant now);

} // namespace burnwick
