// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthRefresher.h"
#include "quota/OAuthUsageResponse.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using test::at;

// The corpus of the fuzzers covers malformed usage responses, the tests of the fetcher other token responses.

TEST(OAuthUsageResponse, EachWindowBecomesItsFigures) {
    const auto response = decodeUsageResponse(R"({
        "five_hour": {"utilization": 1, "resets_at": "2025-06-01T12:00:00.123Z"},
        "seven_day": {"utilization": 2, "resets_at": "2025-06-02"},
        "seven_day_opus": {"utilization": 9, "resets_at": "2025-06-02T12:00:00Z"},
        "seven_day_omelette": {"utilization": 120.25, "resets_at": "2025-06-03T12:00:00+00:00"}})");
    EXPECT_EQ(quotaDataFrom(response), (QuotaData{1, 2, 120.25, at("2025-06-01T12:00:00.123Z"), std::nullopt,
                                                  at("2025-06-03T12:00:00Z")}));
}

TEST(OAuthUsageResponse, ExtraUsageIsInDollarsAndTheUsersMonth) {
    const struct {
        OAuthExtraUsage extraUsage;
        std::optional<ExtraUsageData> expected;
    } rows[] = {
        {{true, 5000, 6250, 125}, ExtraUsageData{62.5, 50, 0, 125, 29}},
        {{true, 5000, 1234, 24.68}, ExtraUsageData{12.34, 50, 50 - 12.34, 24.68, 29}},
        {{true, 0, 5, 0}, {}},
        {{false, 5000, 5, 0}, {}},
    };
    for (const auto &row : rows) {
        const OAuthUsageResponse response{{}, {}, {}, {}, row.extraUsage};
        // Still the first of June in New York.
        EXPECT_EQ(
            extraUsageDataFrom(response, Calendar::inZone("America/New_York"), at("2025-06-02T03:00:00Z")),
            row.expected);
    }
    EXPECT_EQ(extraUsageDataFrom({}, Calendar::inZone("UTC"), Instant()), std::nullopt);
}

TEST(RefreshedTokens, OnlyTheAccessTokenIsRequired) {
    const Instant now = at("2025-06-01T12:00:00Z");
    const struct {
        QByteArray members;
        RefreshedTokens expected;
    } rows[] = {
        {R"("expires_in":3600)", {"a", {}, at("2025-06-01T13:00:00Z")}},
        {R"("expires_in":0.5)", {"a", {}, at("2025-06-01T12:00:00.5Z")}},
        {R"("expires_in":1e300)", {"a", {}, at("2125-06-01T18:00:00Z")}},
        {R"("expires_in":-1e300)", {"a", {}, at("1925-06-02T06:00:00Z")}},
        {R"("expires_in":"3600")", {"a", {}, {}}},
        {R"("refresh_token":"r","scope":"x")", {"a", "r", {}}},
        {R"("refresh_token":7)", {"a", {}, {}}},
        {R"("refresh_token":"")", {"a", {}, {}}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(decodeRefreshedTokens(R"({"access_token":"a",)" + row.members + "}", now), row.expected)
            << row.members.data();
}

} // namespace
} // namespace burnwick
