// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Calendar.h"
#include "support/LogTreeFixture.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using std::chrono::local_days;
using test::at;

TEST(Calendar, DaysAndHoursFollowTheWallClock) {
    const struct {
        const char *zone;
        const char *instant;
        local_days day;
        int hour;
        const char *startOfDay;
    } rows[] = {
        {"UTC", "2025-06-01T23:59:59.999Z", local_days(2025y / 6 / 1), 23, "2025-06-01T00:00:00Z"},
        {"Asia/Kathmandu", "2025-06-01T18:20:00Z", local_days(2025y / 6 / 2), 0, "2025-06-01T18:15:00Z"},
        {"America/New_York", "2025-06-01T03:30:00Z", local_days(2025y / 5 / 31), 23, "2025-05-31T04:00:00Z"},
        // Clocks go forward at 02:00 and back at 03:00.
        {"Europe/Berlin", "2025-03-30T00:59:59Z", local_days(2025y / 3 / 30), 1, "2025-03-29T23:00:00Z"},
        {"Europe/Berlin", "2025-03-30T01:00:00Z", local_days(2025y / 3 / 30), 3, "2025-03-29T23:00:00Z"},
        {"Europe/Berlin", "2025-10-26T00:30:00Z", local_days(2025y / 10 / 26), 2, "2025-10-25T22:00:00Z"},
        {"Europe/Berlin", "2025-10-26T01:30:00Z", local_days(2025y / 10 / 26), 2, "2025-10-25T22:00:00Z"},
        // Midnight itself is skipped: the day begins at 01:00.
        {"Africa/Cairo", "2025-04-25T09:00:00Z", local_days(2025y / 4 / 25), 12, "2025-04-24T22:00:00Z"},
        // Before the first rule of the zone's table.
        {"Europe/Berlin", "1700-01-01T12:00:00Z", local_days(1700y / 1 / 1), 12, "1699-12-31T23:06:32Z"},
    };
    for (const auto &row : rows) {
        const Calendar calendar = Calendar::inZone(row.zone);
        EXPECT_EQ(calendar.dayOf(at(row.instant)), row.day) << row.zone << row.instant;
        EXPECT_EQ(calendar.hourOf(at(row.instant)), row.hour) << row.zone << row.instant;
        EXPECT_EQ(calendar.startOf(row.day), at(row.startOfDay)) << row.zone << row.instant;
    }
}

TEST(Calendar, CursorAgreesWithTheCalendarAcrossEveryChangeOfOffset) {
    const Calendar calendar = Calendar::inZone("America/Sao_Paulo");
    Calendar::Cursor cursor(calendar);
    // Twenty years in steps that hit the half hour, forwards and then back.
    const Instant first = at("2000-01-01T00:15:00Z");
    for (const int direction : {1, -1}) {
        for (int step = 0; step < 20 * 366 * 4; ++step) {
            const Instant instant = first + direction * step * 6h;
            const auto local = cursor.localTimeOf(instant);
            const auto day = std::chrono::floor<std::chrono::days>(local);
            ASSERT_EQ(day, calendar.dayOf(instant));
            ASSERT_EQ((local - day) / 1h, calendar.hourOf(instant));
        }
    }
}

TEST(Calendar, EarlierDaysKeepTheTimeOfDay) {
    const struct {
        const char *zone;
        const char *now;
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

TEST(Calendar, DaysLeftInTheMonth) {
    const Calendar calendar = Calendar::inZone("Europe/Berlin");
    EXPECT_EQ(calendar.daysLeftInMonth(at("2024-02-01T12:00:00Z")), 28);
    EXPECT_EQ(calendar.daysLeftInMonth(at("2025-11-30T12:00:00Z")), 0);
    EXPECT_EQ(calendar.daysLeftInMonth(at("2025-11-30T23:30:00Z")), 30); // already December in Berlin
}

TEST(Calendar, FollowsTheEnvironmentsZone) {
    const Instant noon = at("2025-06-01T12:00:00Z");
    const struct {
        const char *variable;
        int hour;
    } rows[] = {{"Asia/Tokyo", 21}, {":Asia/Tokyo", 21}, {"/usr/share/zoneinfo/Asia/Tokyo", 21}, {"", 12}};
    const std::string before = std::getenv("TZ") != nullptr ? std::getenv("TZ") : "UTC";
    for (const auto &row : rows) {
        setenv("TZ", row.variable, 1);
        EXPECT_EQ(Calendar::current().hourOf(noon), row.hour) << row.variable;
    }
    setenv("TZ", before.c_str(), 1);
}

TEST(Calendar, FollowsTheSystemsLinkUnlessTheEnvironmentNamesAZone) {
    namespace fs = std::filesystem;
    const Instant noon = at("2025-06-01T12:00:00Z");
    const test::TemporaryDirectory directory;
    const fs::path zones = directory.path() / "zoneinfo";
    const fs::path link = directory.path() / "localtime";
    test::writeFile(zones / "Asia/Tokyo", "");
    test::writeFile(zones / "America/New_York", "");
    fs::create_symlink("zoneinfo/America/New_York", directory.path() / "other-link");
    const struct {
        const char *target, *variable;
        int hour;
    } rows[] = {
        {"zoneinfo/Asia/Tokyo", nullptr, 21},           {"zoneinfo/America/New_York", nullptr, 8},
        {"zoneinfo/Asia/Tokyo", "America/New_York", 8}, {"other-link", nullptr, 8},
        {"zoneinfo/Asia/Tokyo", "no zone's name", 21},
    };
    const std::string before = std::getenv("TZ") != nullptr ? std::getenv("TZ") : "UTC";
    for (const auto &row : rows) {
        fs::remove(link);
        fs::create_symlink(row.target, link);
        if (row.variable != nullptr)
            setenv("TZ", row.variable, 1);
        else
            unsetenv("TZ");
        EXPECT_EQ(Calendar::current(link).hourOf(noon), row.hour) << row.target;
    }
    setenv("TZ", before.c_str(), 1);
}

} // namespace
} // namespace burnwick
