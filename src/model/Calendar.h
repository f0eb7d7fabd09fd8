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

/// The Gregorian calendar in one time zone. A small immutable value; thread-safe.
class Calendar {
public:
    /// Returns the calendar in the user's current zone: the one that the variable TZ names, otherwise the one
    /// that the target of `systemLink` names, otherwise UTC.
    [[nodiscard]] static Calendar current(const std::filesystem::path &systemLink = "/etc/localtime");
    /// Returns the calendar in the zone with an IANA name such as "Europe/Berlin". Throws std::runtime_error
    /// for an unknown name.
    [[nodiscard]] static Calendar inZone(const std::string &ianaName);

    /// Whether both are in the same zone.
    bool operator==(const Calendar &) const = default;

    /// The day on which the instant falls.
    [[nodiscard]] LocalDay dayOf(Instant instant) const;
    /// Returns the same local time `days` calendar days earlier. A local time that does not exist becomes the
    /// end of the gap; one that occurs twice, the first of both.
    [[nodiscard]] Instant daysBefore(Instant instant, int days) const;
    /// Returns the number of days after the instant's day in its month: 0 on the last day.
    [[nodiscard]] int daysLeftInMonth(Instant instant) const;

    /// Converts many instants quickly: caches the zone's offset and the period in which it applies. Not
    /// thread-safe.
    class Cursor {
    public:
        explicit Cursor(const Calendar &calendar) noexcept
            : m_zone(calendar.m_zone) {}

        /// Returns the instant's wall-clock time.
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

    const date::time_zone *m_zone; ///< never destroyed
};

} // namespace burnwick
