// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/Timestamp.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using std::chrono::sys_days;

TEST(Timestamp, AcceptedTextsGiveTheirInstantAndPrintBack) {
    const Instant halfPastTen = sys_days(2025y / 1 / 15) + 10h + 30min + 45s;
    const struct {
        const char *text;
        Instant instant;
    } rows[] = {
        {"2025-01-15T10:30:45.123Z", halfPastTen + 123ms},
        {"2025-01-15T12:30:45.123+02:00", halfPastTen + 123ms},
        {"2025-01-15T05:00:45.5-05:30", halfPastTen + 500ms},
        {"2025-01-15T10:30:45.123456+00:00", halfPastTen + 123456us},
        {"2025-01-15T10:30:45.000000001-00:00", halfPastTen + 1ns},
        {"2024-02-29T23:59:59.9Z", sys_days(2024y / 2 / 29) + 23h + 59min + 59s + 900ms},
        {"2025-01-01T00:30:00.0+01:00", sys_days(2024y / 12 / 31) + 23h + 30min},
        {"1678-01-01T00:00:00.0Z", sys_days(1678y / 1 / 1)},
        {"2261-12-31T23:59:59.0Z", sys_days(2262y / 1 / 1) - 1s},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(parseLogInstant(row.text), row.instant) << row.text;
        const auto timestamp = parseTimestamp(row.text);
        ASSERT_TRUE(timestamp) << row.text;
        EXPECT_EQ(printTimestamp(*timestamp), row.text);
    }
}

TEST(Timestamp, AWholeSecondIsADateButNotALogDate) {
    const auto timestamp = parseTimestamp("2025-01-15T10:30:45Z");
    ASSERT_TRUE(timestamp);
    EXPECT_EQ(printTimestamp(*timestamp), "2025-01-15T10:30:45Z");
    EXPECT_EQ(parseLogInstant("2025-01-15T10:30:45Z"), std::nullopt);
}

TEST(Timestamp, EverythingElseIsRefused) {
    for (const char *text : {"",
                             "2025",
                             "2025-01-15",
                             "2025-01-15T10:30:45.Z",
                             "2025-01-15T10:30:45.1234567890Z",
                             "2025-01-15T10:30:45.123",
                             "2025-01-15T10:30:45.123z",
                             "2025-01-15t10:30:45.123Z",
                             "2025-01-15 10:30:45.123Z",
                             " 2025-01-15T10:30:45.123Z",
                             "2025-01-15T10:30:45.123Z ",
                             "2025-02-29T10:30:45.123Z",
                             "2025-13-15T10:30:45.123Z",
                             "2025-00-15T10:30:45.123Z",
                             "2025-01-00T10:30:45.123Z",
                             "2025-01-15T24:00:00.000Z",
                             "2025-01-15T10:60:45.123Z",
                             "2025-01-15T10:30:60.123Z",
                             "2025-01-15T10:30:45,123Z",
                             "2025-01-15T10:30:45.123+0200",
                             "2025-01-15T10:30:45.123+02",
                             "2025-01-15T10:30:45.123+24:00",
                             "2025-01-15T10:30:45.123+02:60",
                             "2025-1-15T10:30:45.123Z",
                             "+025-01-15T10:30:45.123Z",
                             "2025-01-15T10:30.123Z",
                             "1677-12-31T23:59:59.999Z",
                             "2262-01-01T00:00:00.000Z",
                             "2025-01-15T10:30:45.12\xC2\xB3Z"}) {
        EXPECT_EQ(parseLogInstant(text), std::nullopt) << text;
    }
}

} // namespace
} // namespace burnwick
