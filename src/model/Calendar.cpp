// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Calendar.h"

#include <date/tz.h>

#include <algorithm>
#include <cstdlib>
#include <string_view>
#include <system_error>

namespace burnwick {

namespace {

using std::chrono::days;
using std::chrono::nanoseconds;
using LocalTime = std::chrono::local_time<nanoseconds>;

/// Returns the zone's name in a path such as "/usr/share/zoneinfo/Europe/Berlin"; empty for other text.
std::string_view zoneNameIn(std::string_view path) {
    constexpr std::string_view database = "/zoneinfo/";
    const auto at = path.find(database);
    if (!path.starts_with('/') || at == std::string_view::npos)
        return {};
    return path.substr(at + database.size());
}

/// Returns the zone that TZ names; null when TZ is unset or is not in the zone database, such as a POSIX
/// rule.
const date::time_zone *zoneOfEnvironment() {
    const char *variable = std::getenv("TZ");
    if (variable == nullptr)
        return nullptr;
    std::string_view name = variable;
    if (name.starts_with(':'))
        name.remove_prefix(1);
    if (const std::string_view inPath = zoneNameIn(name); !inPath.empty())
        name = inPath;
    if (name.empty())
        name = "UTC";
    try {
        return date::locate_zone(name);
    } catch (const std::runtime_error &) {
        return nullptr;
    }
}

const date::time_zone *zoneOfSystem(const std::filesystem::path &link) {
    std::error_code error;
    const std::string target = std::filesystem::canonical(link, error).string();
    try {
        return date::locate_zone(zoneNameIn(target));
    } catch (const std::runtime_error &) {
        // The path is not a link, or its target names no zone. The library tries other places.
    }
    try {
        return date::current_zone();
    } catch (const std::runtime_error &) {
        return date::locate_zone("UTC");
    }
}

Instant toInstant(LocalTime local, const date::time_zone &zone) {
    return zone.to_sys(date::local_time<nanoseconds>(local.time_since_epoch()), date::choose::earliest);
}

LocalTime localTime(Instant instant, const date::time_zone &zone) {
    return LocalTime(zone.to_local(instant).time_since_epoch());
}

} // namespace

Calendar Calendar::current(const std::filesystem::path &systemLink) {
    const date::time_zone *zone = zoneOfEnvironment();
    return Calendar(zone != nullptr ? zone : zoneOfSystem(systemLink));
}

Calendar Calendar::inZone(const std::string &ianaName) {
    return Calendar(date::locate_zone(ianaName));
}

LocalDay Calendar::dayOf(Instant instant) const {
    return std::chrono::floor<days>(localTime(instant, *m_zone));
}

Instant Calendar::daysBefore(Instant instant, int count) const {
    return toInstant(localTime(instant, *m_zone) - days(count), *m_zone);
}

int Calendar::daysLeftInMonth(Instant instant) const {
    const std::chrono::year_month_day today(dayOf(instant));
    const std::chrono::year_month_day_last last(today.year(), std::chrono::month_day_last(today.month()));
    return static_cast<int>(static_cast<unsigned>(last.day()) - static_cast<unsigned>(today.day()));
}

LocalTime Calendar::Cursor::localTimeOf(Instant instant) {
    if (instant < m_validFrom || instant >= m_validUntil) {
        const date::sys_info info = m_zone->get_info(instant);
        // The first and last periods exceed the range of Instant.
        const auto clamped = [](date::sys_seconds moment) {
            constexpr auto first = std::chrono::ceil<std::chrono::seconds>(Instant::min());
            constexpr auto last = std::chrono::floor<std::chrono::seconds>(Instant::max());
            return Instant(std::clamp(moment, first, last));
        };
        m_validFrom = clamped(info.begin);
        m_validUntil = clamped(info.end);
        m_offset = info.offset;
    }
    return LocalTime(instant.time_since_epoch() + m_offset);
}

} // namespace burnwick
