// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forecast/Forecast.h"
#include "model/Calendar.h"
#include "model/Limit.h"
#include "model/Snapshot.h"

#include <optional>
#include <string>
#include <vector>

/// Texts for limits and their forecasts. Pure functions, independent of the locale. Names of models are
/// untrusted; these functions return them as displayText().
namespace burnwick {

/// Returns "Session", "Weekly" or the name of what a scoped limit covers.
[[nodiscard]] std::string limitName(const Limit &limit);

/// Returns "15:00", the instant's local time.
[[nodiscard]] std::string clockText(Instant instant, const Calendar &calendar);
/// Returns an instant of the limit's window: "15:00", or "Wed 03:00" in windows of seven days.
[[nodiscard]] std::string limitTimeText(Limit::Kind kind, Instant instant, const Calendar &calendar);

/// Returns the time as exactly as forecasts know it: rounded to five minutes, in windows of seven days to an
/// hour.
[[nodiscard]] Instant roundedTime(Limit::Kind kind, Instant instant);

/// Returns the time at which a limit will be full, as exactly as it is known, such as "at 13:20, 1h 40m
/// before it resets". Empty unless that is at least five minutes (in windows of seven days an hour) before
/// the reset.
[[nodiscard]] std::string fullBeforeResetText(Limit::Kind kind, Instant fullAt, Instant resetsAt,
                                              const Calendar &calendar);

/// A forecast in words.
struct LimitWords {
    enum class Tone {
        calm,
        near, ///< only the upper end of the band reaches 100 %
        over, ///< the middle does
    };
    Tone tone = Tone::calm;
    std::string sentence; ///< such as "Probably 92% when it resets at 15:00"
    std::string detail;   ///< a second, less important line, such as "12% in the last hour"; may be empty

    bool operator==(const LimitWords &) const = default;
};

/// Returns the words for the forecast of the course.
[[nodiscard]] LimitWords limitWords(const LimitCourse &course, const Forecast &forecast,
                                    const Calendar &calendar, Instant now);

/// A limit as a row of a list.
struct LimitRow {
    std::string name;
    double usedPct = 0;                ///< may exceed 100
    std::optional<Instant> resetsAt{}; ///< null before the window's first use
    LimitWords words{};
    std::string bar{}; ///< "■■■■■■■□□□ 67% Session, resets at 15:00", for hosts that show text only

    bool operator==(const LimitRow &) const = default;
};

/// Returns a row for each limit, in the order of the snapshot.
[[nodiscard]] std::vector<LimitRow> limitRows(const Snapshot &snapshot, Instant now);

/// Returns "as of 12:05", the time of the quota, if that is stale; otherwise an empty text.
[[nodiscard]] std::string staleQuotaText(const AccountFigures &account, const Calendar &calendar);

/// Returns a line for each limit whose window is known, such as "Session: Probably 92% when it resets at
/// 15:00", and that of staleQuotaText().
[[nodiscard]] std::vector<std::string> limitLines(const Snapshot &snapshot, Instant now);

/// Returns the lines for below the rows: the sentence of the first row with the gravest tone, after its name
/// unless it is the first row, or "Not connected" without rows and login; and that of staleQuotaText().
[[nodiscard]] std::vector<std::string> limitRemarks(const Snapshot &snapshot,
                                                    const std::vector<LimitRow> &rows);

} // namespace burnwick
