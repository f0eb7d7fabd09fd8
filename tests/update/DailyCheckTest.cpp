// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/DailyCheck.h"

#include "prefs/SettingsFile.h"
#include "prefs/UserDefaults.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

class DailyCheckTest : public testing::Test {
protected:
    /// As a new run of the program would.
    bool takesTurn() {
        UserDefaults defaults(m_file.path);
        return DailyCheck(defaults, m_clock).takeTurn();
    }
    /// How many checks there are when it is looked every hour.
    int checksWithin(std::chrono::hours time) {
        int checks = 0;
        for (auto passed = 0h; passed < time; passed += 1h) {
            m_clock.advance(1h);
            checks += takesTurn() ? 1 : 0;
        }
        return checks;
    }

    test::SettingsFile m_file;
    test::ManualClock m_clock{"2025-06-10T12:00:00.000Z"};
};

TEST_F(DailyCheckTest, AClockThatJumpsNeitherStopsNorMultipliesTheChecks) {
    const struct {
        const char *what;
        std::chrono::hours there, back;
    } rows[] = {
        {"minus an hour", -1h, 1h},
        {"a year", 8760h, -8760h},
        {"minus a year", -8760h, 8760h},
    };
    for (const auto &row : rows) {
        EXPECT_TRUE(takesTurn()) << row.what;
        m_clock.advance(row.there);
        EXPECT_LE(checksWithin(24h), 2) << row.what;
        EXPECT_EQ(checksWithin(10 * 24h), 10) << row.what;
        m_clock.advance(row.back);
        EXPECT_LE(checksWithin(24h), 2) << row.what;
        EXPECT_EQ(checksWithin(10 * 24h), 10) << row.what;
        m_clock.advance(24h);
    }
}

TEST_F(DailyCheckTest, AStrangeRecordCannotStopTheChecks) {
    for (const char *stored :
         {"null", "\"soon\"", "1e300", "-9223372036854775808", "9223372036854775807", "99999999999"}) {
        m_file.write(QByteArray(R"({"lastUpdateCheck":)") + stored + R"(,"theme":"dark"})");
        EXPECT_LE(checksWithin(24h), 1) << stored;
        EXPECT_EQ(checksWithin(24h), 1) << stored;
        EXPECT_EQ(m_file.values().value(QStringLiteral("theme")), QStringLiteral("dark")) << stored;
    }
}

TEST_F(DailyCheckTest, ATurnGivenBackWasNone) {
    UserDefaults defaults(m_file.path);
    DailyCheck check(defaults, m_clock);
    ASSERT_TRUE(check.takeTurn());
    check.giveBack();
    ASSERT_TRUE(check.takeTurn());

    m_clock.advance(2h);
    check.record();
    check.giveBack();
    EXPECT_FALSE(check.takeTurn());
    m_clock.advance(22h);
    EXPECT_TRUE(check.takeTurn());
}

} // namespace
} // namespace burnwick
