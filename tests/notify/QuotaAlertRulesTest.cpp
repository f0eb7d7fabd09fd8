// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "notify/QuotaAlertRules.h"

#include "support/ManualClock.h"

#include "support/HostileTexts.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace burnwick::alerts {
namespace {

using namespace std::chrono_literals;
using test::at;

constexpr double infinity = std::numeric_limits<double>::infinity();
const std::string thisWindow = "1763300000.0";

TEST(QuotaAlertRules, AnAlertIsDueOnceInAWindowFromItsThresholdOn) {
    using enum QuotaAlert;
    const auto none = std::vector<QuotaAlert>();
    const Instant thisReset = at("2025-11-16T13:33:20Z");
    const struct {
        const char *what;
        QuotaCheck check;
        std::vector<QuotaAlert> due;
    } rows[] = {
        {"just below 80", {thisReset, 79.99, true, true, {}, {}}, none},
        {"80 exactly", {thisReset, 80.0, true, true, {}, {}}, {eightyPercent}},
        {"just below 100", {thisReset, 99.99, true, true, {}, {}}, {eightyPercent}},
        {"100 exactly: both, in this order",
         {thisReset, 100.0, true, true, {}, {}},
         {eightyPercent, rateLimit}},
        {"sent before", {thisReset, 92.0, true, true, thisWindow, {}}, none},
        {"sent in another window", {thisReset, 85.0, true, true, "1763282000.0", {}}, {eightyPercent}},
        {"each for itself: 80 sent", {thisReset, 100.0, true, true, thisWindow, {}}, {rateLimit}},
        {"each for itself: limit sent", {thisReset, 100.0, true, true, {}, thisWindow}, {eightyPercent}},
        {"the other one's memory does not count",
         {thisReset, 85.0, true, true, {}, thisWindow},
         {eightyPercent}},
        {"sent, and the instant wobbles", {thisReset + 6s, 92.0, true, true, thisWindow, {}}, none},
        {"sent, and wobbles at the most", {thisReset - 60s, 92.0, true, true, thisWindow, {}}, none},
        {"sent in the window before",
         {thisReset + 60s + 1ns, 92.0, true, true, thisWindow, {}},
         {eightyPercent}},
        {"a memory that is none", {thisReset, 92.0, true, true, "1763300000.0 ", {}}, {eightyPercent}},
        {"a memory without end", {thisReset, 92.0, true, true, "inf", {}}, {eightyPercent}},
        {"80 not wanted", {thisReset, 100.0, false, true, {}, {}}, {rateLimit}},
        {"limit not wanted", {thisReset, 100.0, true, false, {}, {}}, {eightyPercent}},
        {"no window known, but an earlier one", {{}, 100.0, true, true, thisWindow, thisWindow}, none},
        {"no number", {thisReset, std::nan(""), true, true, {}, {}}, none},
        {"no end", {thisReset, infinity, true, true, {}, {}}, none},
    };
    for (const auto &row : rows)
        EXPECT_EQ(dueQuotaAlerts(row.check), row.due) << row.what;
}

TEST(QuotaAlertRules, AWindowIsStoredAsSeconds) {
    const struct {
        const char *resetAt;
        const char *id;
    } rows[] = {
        {"2025-11-16T13:30:00Z", "1763299800.0"},
        {"2025-11-16T13:30:01.987654Z", "1763299801.987654"},
        {"1970-01-01T00:00:00Z", "0.0"},
        {"2200-01-01T00:00:00Z", "7258118400.0"},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(windowIdOf(at(row.resetAt)), row.id);
        EXPECT_TRUE(dueQuotaAlerts({at(row.resetAt), 80, true, true, row.id, {}}).empty()) << row.id;
    }
}

TEST(QuotaAlertRules, TimeIsToldInHoursAndMinutesCutOff) {
    const Instant now = at("2025-11-16T12:00:00.25Z");
    const struct {
        std::chrono::nanoseconds ahead;
        const char *text;
    } rows[] = {
        {1h + 5min, "1h 5m"}, {1h - 1ns, "59m"}, {59s, "0m"}, {-1ns, "0m"}, {240h + 9min, "240h 9m"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(timeUntil(now + row.ahead, now), row.text) << row.ahead.count();
    EXPECT_EQ(timeUntil(std::nullopt, now), "soon");
    // The distance is beyond what the difference of two instants can hold.
    EXPECT_EQ(timeUntil(at("1700-01-01T00:00:00Z"), now), "0m");
    EXPECT_EQ(timeUntil(at("2250-01-01T00:00:00Z"), at("1700-01-01T00:00:00Z")), "4821192h 0m");
}

TEST(QuotaAlertRules, UsageIsCutToAWholeNumber) {
    const struct {
        double usagePct;
        const char *body;
    } rows[] = {
        {85.9, "You've used 85% of your 5-hour quota."},
        {1234567.8, "You've used 1234567% of your 5-hour quota."},
        {1e20, "You've used 100000000000000000000% of your 5-hour quota."},
    };
    for (const auto &row : rows) {
        const UserNotification expected{"quota80", "Quota Alert", row.body};
        EXPECT_EQ(eightyPercentAlert(row.usagePct), expected) << row.usagePct;
    }
    EXPECT_EQ(eightyPercentAlert(std::numeric_limits<double>::max()).body.size(),
              309 + eightyPercentAlert(1.0).body.size() - 1);
}

TEST(QuotaAlertRules, TheOtherAlertsHaveTheirWords) {
    const Instant now = at("2025-11-16T13:33:20Z");
    const UserNotification rateLimit{"rateLimit", "Rate Limit Reached",
                                     "You've hit your rate limit. Quota resets in 2h 5m."};
    EXPECT_EQ(rateLimitAlert(now + 125min, now), rateLimit);
    const UserNotification reset{"sessionReset-1763300000.0", "Session Reset",
                                 "Your 5-hour quota has reset. You're ready to go!"};
    EXPECT_EQ(sessionResetAlert(now), reset);
    EXPECT_EQ(sessionResetAlert(now + 250ms).identifier, "sessionReset-1763300000.25");
    const UserNotification update{"updateAvailable", "Update Available",
                                  "Burnwick 1.10.0 <b>%1%</b>/.. is available. Open Settings to update."};
    EXPECT_EQ(updateAvailableAlert("1.10.0 <b>%1%</b>/.."), update);
    for (const auto &hostile : test::hostileTexts())
        EXPECT_EQ(updateAvailableAlert(hostile.text).body,
                  "Burnwick " + hostile.shown + " is available. Open Settings to update.");
}

} // namespace
} // namespace burnwick::alerts
