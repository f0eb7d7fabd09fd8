// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/LimitText.h"

#include "display/DisplayFormat.h"
#include "display/DisplayText.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace burnwick {

namespace {

using std::chrono::minutes;

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

/// The step of the times of a forecast: as exactly as they are known.
minutes stepOf(Limit::Kind kind) {
    return kind == Limit::Kind::session ? minutes(5) : minutes(60);
}

/// Returns "at 15:00" or "on Wed 03:00".
std::string timePhrase(Limit::Kind kind, Instant instant, const Calendar &calendar) {
    return (kind == Limit::Kind::session ? "at " : "on ") + limitTimeText(kind, instant, calendar);
}

/// See LimitRow::bar.
std::string barText(const Limit &limit, const Calendar &calendar) {
    constexpr int squares = 10;
    const int filled = static_cast<int>(std::lround(std::clamp(limit.usedPct, 0.0, 100.0) / (100 / squares)));
    std::string text;
    for (int i = 0; i < squares; ++i)
        text += i < filled ? "■" : "□";
    text += ' ' + percentText(limit.usedPct) + ' ' + limitName(limit);
    return limit.resetsAt ? text + ", resets " + timePhrase(limit.kind, *limit.resetsAt, calendar) : text;
}

/// Returns "12% in the last hour", or "4% in the last day" in windows of seven days; empty before the first.
std::string recentUseText(const LimitCourse &course, const Forecast &forecast, Instant now) {
    const bool isSession = course.limit.kind == Limit::Kind::session;
    const Instant since = now - (isSession ? std::chrono::hours(1) : std::chrono::hours(24));
    const auto &samples = course.samples;
    const auto after = std::ranges::upper_bound(samples, since, {}, &LimitSample::at);
    if (after == samples.begin())
        return {};
    const double used = std::max(0.0, forecast.rawPercent - (after - 1)->percent);
    return percentText(used) + (isSession ? " in the last hour" : " in the last day");
}

} // namespace

std::string limitName(const Limit &limit) {
    switch (limit.kind) {
    case Limit::Kind::session:
        return "Session";
    case Limit::Kind::weekly:
        return "Weekly";
    case Limit::Kind::weeklyScoped:
        break;
    }
    return displayText(limit.model);
}

std::string clockText(Instant instant, const Calendar &calendar) {
    const auto local = Calendar::Cursor(calendar).localTimeOf(instant);
    const auto minute = std::chrono::floor<minutes>(local - std::chrono::floor<std::chrono::days>(local));
    return twoDigits(minute.count() / 60) + ':' + twoDigits(minute.count() % 60);
}

std::string limitTimeText(Limit::Kind kind, Instant exact, const Calendar &calendar) {
    // The service computes a reset for each answer, a second or two before or after the full hour.
    const Instant instant = std::chrono::round<minutes>(exact);
    if (kind == Limit::Kind::session)
        return clockText(instant, calendar);
    constexpr std::array days{"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    const std::chrono::weekday day{std::chrono::sys_days(calendar.dayOf(instant).time_since_epoch())};
    return std::string(days.at(day.c_encoding())) + ' ' + clockText(instant, calendar);
}

Instant roundedTime(Limit::Kind kind, Instant instant) {
    const auto step = stepOf(kind).count();
    return Instant(std::chrono::round<minutes>(instant.time_since_epoch() / step) * step);
}

std::string fullBeforeResetText(Limit::Kind kind, Instant fullAt, Instant resetsAt,
                                const Calendar &calendar) {
    const Instant shown = roundedTime(kind, fullAt);
    if (shown > resetsAt - stepOf(kind))
        return {};
    return timePhrase(kind, shown, calendar) + ", " + timeRemainingText(resetsAt, shown) +
           " before it resets";
}

LimitWords limitWords(const LimitCourse &course, const Forecast &forecast, const Calendar &calendar,
                      Instant now) {
    using State = Forecast::State;
    using Tone = LimitWords::Tone;
    const Limit &limit = course.limit;
    if (!limit.resetsAt)
        return {Tone::calm, percentText(limit.usedPct) + " used", "The window begins with the next answer"};
    const auto phrase = [&](Instant instant) { return timePhrase(limit.kind, instant, calendar); };
    const std::string reset = phrase(*limit.resetsAt);
    const std::string used = percentText(forecast.percent);
    switch (forecast.state) {
    case State::waiting:
        return {Tone::calm, "Reset " + reset + ", waiting for figures", {}};
    case State::stale:
        return {Tone::calm, percentText(limit.usedPct) + " used",
                "Last measured " + phrase(forecast.measuredAt.value_or(limit.observedAt))};
    case State::full:
        return {Tone::over, "Full until " + limitTimeText(limit.kind, *limit.resetsAt, calendar),
                timeRemainingText(*limit.resetsAt, now) + " to wait"};
    case State::quiet:
        return {Tone::calm,
                "Quiet: stays at " + used + " until " + limitTimeText(limit.kind, *limit.resetsAt, calendar),
                {}};
    case State::collecting:
        return {Tone::calm, "Collecting…", "A forecast takes ten minutes"};
    case State::expected:
        break;
    }
    const std::string recent = recentUseText(course, forecast, now);
    const std::string full =
        forecast.fullAt ? fullBeforeResetText(limit.kind, *forecast.fullAt, *limit.resetsAt, calendar)
                        : std::string();
    if (!full.empty())
        return {Tone::over, "Full " + full, recent};
    const std::string probably =
        "Probably " + percentText(forecast.atReset->middle) + " when it resets " + reset;
    if (!forecast.earliestFullAt)
        return {Tone::calm, probably, recent};
    const Instant earliest = std::min(roundedTime(limit.kind, *forecast.earliestFullAt), *limit.resetsAt);
    return {Tone::near, "Could be full by " + limitTimeText(limit.kind, earliest, calendar), probably};
}

std::vector<LimitRow> limitRows(const Snapshot &snapshot, Instant now) {
    std::vector<LimitRow> rows;
    for (const LimitCourse &course : snapshot.usage.limitCourses) {
        rows.push_back({limitName(course.limit), course.limit.usedPct, course.limit.resetsAt,
                        limitWords(course, forecastOf(course, now), snapshot.usage.calendar, now),
                        barText(course.limit, snapshot.usage.calendar)});
    }
    return rows;
}

std::string staleQuotaText(const AccountFigures &account, const Calendar &calendar) {
    return account.isQuotaStale && account.quotaReadAt ? "as of " + clockText(*account.quotaReadAt, calendar)
                                                       : std::string();
}

std::vector<std::string> limitLines(const Snapshot &snapshot, Instant now) {
    std::vector<std::string> lines;
    for (const LimitRow &row : limitRows(snapshot, now)) {
        if (row.resetsAt)
            lines.push_back(row.name + ": " + row.words.sentence);
    }
    if (std::string stale = staleQuotaText(snapshot.account, snapshot.usage.calendar); !stale.empty())
        lines.push_back(std::move(stale));
    return lines;
}

std::vector<std::string> limitRemarks(const Snapshot &snapshot, const std::vector<LimitRow> &rows) {
    const OAuthStatus link = snapshot.account.oauthStatus;
    std::vector<std::string> remarks;
    const auto gravest =
        std::ranges::max_element(rows, {}, [](const LimitRow &row) { return row.words.tone; });
    if (gravest != rows.end())
        remarks.push_back((gravest == rows.begin() ? std::string() : gravest->name + ": ") +
                          gravest->words.sentence);
    else if (link == OAuthStatus::disconnected || link == OAuthStatus::expired)
        remarks.emplace_back("Not connected");
    if (std::string stale = staleQuotaText(snapshot.account, snapshot.usage.calendar); !stale.empty())
        remarks.push_back(std::move(stale));
    return remarks;
}

} // namespace burnwick
