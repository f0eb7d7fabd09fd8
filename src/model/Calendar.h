// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <cstdint>
#include <filesystem>
#include <string>

namespace date {
class time_zone;
}

namespace burnwick {

/// The Gregorian calendar in one time zone. A small immutable value; safe from any thread.
class Calendar {
public:
    /// The user's zone at this moment: the variable TZ when it names a zone, otherwise the one to which the
    /// system's link leads, otherwise UTC.
    [[nodiscard]] static Calendar current(const std::filesystem::path &systemLink = "/etc/localtime");
    /// The zone of an IANA name such as "Europe/Berlin"; throws std::runtime_error for an unknown one.
    [[nodiscard]] static Calendar inZone(const std::string &ianaName);

    /// Whether both are in the same zone.
    bool operator==(const Calendar &) const = default;

    /// The day on which the instant falls.
    [[nodiscard]] LocalDay dayOf(Instant instant) const;
    /// The same time of day that many calendar days earlier. A time that the clocks skip becomes the moment
    /// after the gap, one that occurs twice the first of both.
    [[nodiscard]] Instant daysBefore(Instant instant, int days) const;
    /// Days after today up to the month's end: 0 on its last day.
    [[nodiscard]] int daysLeftInMonth(Instant instant) const;

    /// Converts long lists: the zone's rules are looked up again only when an instant leaves the period for
    /// which the last answer holds. For one thread.
    class Cursor {
    public:
        explicit Cursor(const Calendar &calendar) noexcept
            : m_zone(calendar.m_zone) {}

        /// The instant's wall-clock time, as nanoseconds since 1970-01-01 00:00 of the local calendar.
        [[nodiscard]] std::chrono::local_time<std::chrono::nanoseconds> localTimeOf(Instant instant);

    private:
        const date::time_zone *m_zone;
        Instant m_validFrom = Instant::max();
        Instant m_validUntil = Instant::min();
        std::chrono::nanoseconds m_offset{0};
    };

private:
    explicit Calendar(const date::time_zone *zone) noexcept
        : m_zone(zone) {}

    const date::time_zone *m_zone; ///< lives as long as the process
};

} // namespace burnwick
