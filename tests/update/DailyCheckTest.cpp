// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/DailyCheck.h"
#include "platform/linux/defaults/JsonUserDefaults.h"

#include "prefs/SettingsFile.h"
#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

class DailyCheckTest : public testing::Test {
protected:
    /// Polls every hour, each time in a new run of the program. Returns the number of checks.
    int checksWithin(std::chrono::hours time) {
        int checks = 0;
        for (auto passed = 0h; passed < time; passed += 1h) {
            m_clock.advance(1h);
            JsonUserDefaults defaults(m_file.path);
            DailyCheck check(defaults, m_clock);
            if (check.isDue()) {
                check.record(check.now());
                ++checks;
            }
        }
        return checks;
    }

    test::SettingsFile m_file;
    test::ManualClock m_clock{"2025-06-10T12:00:00.000Z"};
};

TEST_F(DailyCheckTest, ClockJumpsNeitherStopNorMultiplyTheChecks) {
    EXPECT_EQ(checksWithin(1h), 1);
    EXPECT_EQ(checksWithin(23h), 0);
    EXPECT_EQ(checksWithin(10 * 24h), 10);
    for (const auto jump : {-1h, 1h, 8760h, -8760h, -8760h, 8760h}) {
        SCOPED_TRACE(jump.count());
        m_clock.advance(jump);
        EXPECT_LE(checksWithin(24h), 2);
        EXPECT_EQ(checksWithin(10 * 24h), 10);
    }
}

TEST_F(DailyCheckTest, JunkInTheStoreDelaysTheCheckByADayAtMost) {
    for (const char *stored :
         {"null", "\"soon\"", "1e300", "-9223372036854775808", "9223372036854775807", "99999999999"}) {
        m_file.write(QByteArray(R"({"lastUpdateCheck":)") + stored + R"(,"theme":"dark"})");
        EXPECT_LE(checksWithin(24h), 1) << stored;
        EXPECT_EQ(checksWithin(24h), 1) << stored;
        EXPECT_EQ(m_file.values().value(QStringLiteral("theme")), QStringLiteral("dark")) << stored;
    }
}

} // namespace
} // namespace burnwick
