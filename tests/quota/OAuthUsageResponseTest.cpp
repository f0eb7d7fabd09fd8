// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthUsageResponse.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using test::at;

// The corpus of the fuzzers covers malformed responses.

TEST(OAuthUsageResponseTest, EachMemberIsDecodedAndEncoded) {
    const auto response = decodeUsageResponse(R"({
        "five_hour": {"utilization": 1, "resets_at": "2025-06-01T12:00:00.123Z"},
        "seven_day": {"utilization": 2, "resets_at": "2025-06-02T12:00:00Z", "new": [1]},
        "seven_day_opus": {"utilization": 9, "resets_at": null},
        "seven_day_omelette": {"utilization": 120.25, "resets_at": "2025-06-03T12:00:00.000000+00:00"},
        "extra_usage": {"is_enabled": true, "monthly_limit": 1, "used_credits": 2, "utilization": 3},
        "something_new": null})");
    EXPECT_EQ(response.sevenDayOpus, (OAuthUsagePeriod{9, {}}));
    EXPECT_EQ(response.extraUsage, (OAuthExtraUsage{true, 1, 2, 3}));
    EXPECT_EQ(quotaDataFrom(response), (QuotaData{1, 2, 120.25, at("2025-06-01T12:00:00.123Z"),
                                                  at("2025-06-02T12:00:00Z"), at("2025-06-03T12:00:00Z")}));
    EXPECT_EQ(decodeUsageResponse(encodeUsageResponse(response)), response);
}

TEST(OAuthUsageResponseTest, ResetsThatDoNotParseAreNull) {
    for (const char *text : {"", "2025-06-01", "2025-13-01T12:00:00Z"}) {
        const OAuthUsageResponse response{{1, text}, {2, {}}, {}, {}, {}};
        EXPECT_FALSE(quotaDataFrom(response).fiveHourResetAt) << text;
    }
}

TEST(OAuthUsageResponseTest, ExtraUsageIsInDollarsAndTheUsersMonth) {
    const struct {
        QByteArray json;
        std::optional<ExtraUsageData> expected;
    } rows[] = {
        {R"({"is_enabled":true,"monthly_limit":5000,"used_credits":6250,"utilization":125})",
         ExtraUsageData{62.5, 50, 0, 125, 29}},
        {R"({"is_enabled":true,"monthly_limit":5000,"used_credits":1234,"utilization":24.68})",
         ExtraUsageData{12.34, 50, 50 - 12.34, 24.68, 29}},
        {R"({"is_enabled":true,"monthly_limit":0,"used_credits":5,"utilization":0})", {}},
        {R"({"is_enabled":false,"monthly_limit":5000,"used_credits":5,"utilization":0})", {}},
        {"null", {}},
    };
    for (const auto &row : rows) {
        const auto response = decodeUsageResponse(
            R"({"five_hour":{"utilization":41.5},"seven_day":{"utilization":7},"extra_usage":)" + row.json +
            "}");
        // Still the first of June in New York.
        EXPECT_EQ(
            extraUsageDataFrom(response, Calendar::inZone("America/New_York"), at("2025-06-02T03:00:00Z")),
            row.expected)
            << row.json.data();
    }
}

} // namespace
} // namespace burnwick
