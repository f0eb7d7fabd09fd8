// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogRetention.h"

#include "support/LogTreeFixture.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

namespace burnwick {
namespace {

TEST(LogRetention, IsThirtyDaysUnlessTheSettingsHaveAPositiveInteger) {
    const test::TemporaryDirectory home;
    const auto file = home.path() / ".claude" / "settings.json";
    EXPECT_EQ(daysUntilCleanup(home.path()), 30) << "without a file";
    const std::string huge(std::size_t{1} << 20U, ' ');
    const std::string deep(100'000, '[');
    const std::pair<std::string, int> rows[] = {
        {R"({"cleanupPeriodDays":7})", 7},
        {R"({"model":{"cleanupPeriodDays":7},"cleanupPeriodDays":365})", 365},
        {R"({"cleanupPeriodDays":1e2})", 100},
        {R"({"cleanupPeriodDays":99999999999})", 2'147'483'647},
        {R"({"cleanupPeriodDays":1e300})", 30},
        {R"({"cleanupPeriodDays":0})", 30},
        {R"({"cleanupPeriodDays":-1})", 30},
        {R"({"cleanupPeriodDays":7.5})", 30},
        {R"({"cleanupPeriodDays":"7"})", 30},
        {R"({"cleanupPeriodDays":null})", 30},
        {R"({"CleanupPeriodDays":7})", 30},
        {R"({"cleanupPeriodDays":7)", 30},
        {R"([{"cleanupPeriodDays":7}])", 30},
        {R"({"cleanupPeriodDays":7,"a":)" + deep + "}", 30},
        {R"({"cleanupPeriodDays":7})" + huge, 30},
        {"", 30},
    };
    for (const auto &[text, days] : rows) {
        test::writeFile(file, text);
        EXPECT_EQ(daysUntilCleanup(home.path()), days) << text.substr(0, 60);
    }
    std::filesystem::remove(file);
    ASSERT_EQ(::mkfifo(file.c_str(), S_IRUSR | S_IWUSR), 0);
    EXPECT_EQ(daysUntilCleanup(home.path()), 30) << "a pipe without a writer";
}

} // namespace
} // namespace burnwick
