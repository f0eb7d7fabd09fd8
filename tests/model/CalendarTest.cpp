// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Calendar.h"
#include "support/EnvironmentVariable.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using test::at;

auto localTime(const Calendar &calendar, Instant instant) {
    return Calendar::Cursor(calendar).localTimeOf(instant);
}

TEST(Calendar, LocalTimesAreThoseOfTheWallClock) {
    const struct {
        const char *zone, *instant;
        std::chrono::local_seconds expected;
    } rows[] = {
        {"Asia/Kathmandu", "2025-06-01T18:20:00Z", local_days(2025y / 6 / 2) + 5min},
        {"America/New_York", "2025-06-01T03:30:00Z", local_days(2025y / 5 / 31) + 23h + 30min},
        // Clocks go forward at 02:00 and back at 03:00.
        {"Europe/Berlin", "2025-03-30T00:59:00Z", local_days(2025y / 3 / 30) + 1h + 59min},
        {"Europe/Berlin", "2025-03-30T01:00:00Z", local_days(2025y / 3 / 30) + 3h},
        {"Europe/Berlin", "2025-10-26T00:30:00Z", local_days(2025y / 10 / 26) + 2h + 30min},
        {"Europe/Berlin", "2025-10-26T01:30:00Z", local_days(2025y / 10 / 26) + 2h + 30min},
        // Before the first rule of the zone's table.
        {"Europe/Berlin", "1700-01-01T12:00:00Z", local_days(1700y / 1 / 1) + 12h + 53min + 28s},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(localTime(Calendar::inZone(row.zone), at(row.instant)), row.expected)
            << row.zone << row.instant;
    }
}

TEST(Calendar, ACursorAgreesWithNewOnesAcrossEachChangeOfTheOffset) {
    const Calendar calendar = Calendar::inZone("America/Sao_Paulo");
    Calendar::Cursor cursor(calendar);
    // Twenty years in steps with half hours, forwards and then backwards.
    const Instant first = at("2000-01-01T00:15:00Z");
    for (const int direction : {1, -1}) {
        for (int step = 0; step < 20 * 366 * 4; ++step) {
            const Instant instant = first + direction * step * 6h;
            const auto local = cursor.localTimeOf(instant);
            ASSERT_EQ(local, localTime(calendar, instant));
            ASSERT_EQ(std::chrono::floor<std::chrono::days>(local), calendar.dayOf(instant));
        }
    }
}

TEST(Calendar, EarlierDaysKeepTheTimeOfDay) {
    const struct {
        const char *zone, *now;
        int days;
        const char *expected;
    } rows[] = {
        {"UTC", "2025-03-01T10:00:00.5Z", 1, "2025-02-28T10:00:00.5Z"},
        {"Europe/Berlin", "2025-04-01T10:00:00Z", 7, "2025-03-25T11:00:00Z"}, // one of the days has 23 hours
        {"Europe/Berlin", "2025-10-27T10:00:00Z", 1, "2025-10-26T10:00:00Z"},
        {"Europe/Berlin", "2025-03-31T00:30:00Z", 1, "2025-03-30T01:00:00Z"}, // 02:30 does not exist
        {"Europe/Berlin", "2025-10-27T01:30:00Z", 1, "2025-10-26T00:30:00Z"}, // 02:30 occurs twice
        {"America/New_York", "2025-03-31T16:00:00Z", 30, "2025-03-01T17:00:00Z"},
    };
    for (const auto &row : rows) {
        const Calendar calendar = Calendar::inZone(row.zone);
        EXPECT_EQ(calendar.daysBefore(at(row.now), row.days), at(row.expected)) << row.zone << row.now;
    }
}

TEST(Calendar, CountsTheDaysLeftInTheMonth) {
    const Calendar calendar = Calendar::inZone("Europe/Berlin");
    EXPECT_EQ(calendar.daysLeftInMonth(at("2024-02-01T12:00:00Z")), 28);
    EXPECT_EQ(calendar.daysLeftInMonth(at("2025-11-30T12:00:00Z")), 0);
    EXPECT_EQ(calendar.daysLeftInMonth(at("2025-11-30T23:30:00Z")), 30); // December in Berlin
}

TEST(Calendar, TheZoneIsThatOfTheEnvironmentOrOfTheSystemsLink) {
    namespace fs = std::filesystem;
    const test::TemporaryDirectory directory;
    const fs::path link = directory.path() / "localtime";
    for (const char *zone : {"Asia/Tokyo", "America/New_York"})
        test::writeFile(directory.path() / "zoneinfo" / zone, "");
    fs::create_symlink("zoneinfo/America/New_York", directory.path() / "other-link");
    const struct {
        const char *target, *variable, *zone;
    } rows[] = {
        {"zoneinfo/America/New_York", "Asia/Tokyo", "Asia/Tokyo"},
        {"zoneinfo/America/New_York", ":Asia/Tokyo", "Asia/Tokyo"},
        {"zoneinfo/America/New_York", "/usr/share/zoneinfo/Asia/Tokyo", "Asia/Tokyo"},
        {"zoneinfo/America/New_York", "", "UTC"},
        {"zoneinfo/Asia/Tokyo", "no zone's name", "Asia/Tokyo"},
        {"zoneinfo/Asia/Tokyo", nullptr, "Asia/Tokyo"},
        {"zoneinfo/America/New_York", nullptr, "America/New_York"},
        {"other-link", nullptr, "America/New_York"},
    };
    for (const auto &row : rows) {
        fs::remove(link);
        fs::create_symlink(row.target, link);
        const test::EnvironmentVariable variable("TZ", row.variable);
        EXPECT_EQ(Calendar::current(link), Calendar::inZone(row.zone)) << row.target;
    }
}

} // namespace
} // namespace burnwick
