// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthRefresher.h"
#include "quota/OAuthUsageResponse.h"

#include "model/Timestamp.h"
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

/// Returns a line for each limit: kind, model, percentage, reset.
std::string described(const std::vector<Limit> &limits) {
    std::string text;
    for (const Limit &limit : limits) {
        constexpr const char *kinds[] = {"session", "weekly", "scoped "};
        text += kinds[static_cast<int>(limit.kind)] + limit.model + ' ' +
                QByteArray::number(limit.usedPct).data() +
                (limit.resetsAt ? ' ' + printTimestamp(*limit.resetsAt, 0) : "") + "; ";
    }
    return text;
}

TEST(OAuthUsageResponse, WindowsAndListedLimitsBecomeOneList) {
    const QByteArray windows =
        R"("five_hour":{"utilization":-1,"resets_at":"soon"},"seven_day":{"utilization":2},)";
    const QByteArray session = R"({"kind":"session","percent":41.5,"resets_at":"2025-06-01T12:00:00.5Z"},)";
    const QByteArray weekly = R"({"kind":"weekly_all","percent":130,"resets_at":"2035-06-01T12:00:00Z"},)";
    const auto scoped = [](const char *name, double percent) {
        return R"({"kind":"weekly_scoped","percent":)" + QByteArray::number(percent) +
               R"(,"resets_at":null,"scope":{"model":{"id":null,"display_name":")" + name + R"("}}},)";
    };
    const QByteArray design = R"("seven_day_omelette":{"utilization":8},)";
    QByteArray many;
    for (int i = 0; i < 10'000; ++i)
        many += scoped(QByteArray::number(i).data(), 1);
    std::string twenty = "session 0; weekly 2; ";
    for (int i = 0; i < 20; ++i)
        twenty += "scoped " + std::to_string(i) + " 1; ";
    const struct {
        const char *what;
        QByteArray members, elements;
        std::string limits;
        double fiveHour, sevenDay, claudeDesign;
    } rows[] = {
        {"windows alone", windows, "", "session 0; weekly 2; ", -1, 2, 0},
        {"windows win", windows, session + weekly + scoped("Sonnet", 5),
         "session 0; weekly 2; scoped Sonnet 5; ", -1, 2, 0},
        {"no windows", "", weekly + session,
         "session 41.5 2025-06-01T12:00:00Z; weekly 130 2035-06-01T12:00:00Z; ", 41.5, 130, 0},
        {"null windows", R"("five_hour":null,"seven_day":null,)", session + weekly,
         "session 41.5 2025-06-01T12:00:00Z; weekly 130 2035-06-01T12:00:00Z; ", 41.5, 130, 0},
        {"no weekly limit", "", session, "session 41.5 2025-06-01T12:00:00Z; ", 41.5, 0, 0},
        {"the design window wins", windows + design, scoped("Sonnet", 5) + scoped("Claude Design", 9),
         "session 0; weekly 2; scoped Claude Design 8; scoped Sonnet 5; ", -1, 2, 8},
        {"design in the list", windows, scoped("Sonnet", 5) + scoped("Claude Design", 9),
         "session 0; weekly 2; scoped Claude Design 9; scoped Sonnet 5; ", -1, 2, 9},
        {"equal names", windows, scoped("B", 5) + scoped("A", -6) + scoped("B", 7),
         "session 0; weekly 2; scoped B 5; scoped A 0; ", -1, 2, 0},
        {"very many", windows, many, twenty, -1, 2, 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const auto response = decodeUsageResponse("{" + row.members + R"("limits":[)" + row.elements +
                                                  R"({"kind":"monthly"}]})");
        const auto limits = limitsFrom(response, at("2025-06-01T08:00:00Z"));
        EXPECT_EQ(described(limits), row.limits);
        EXPECT_EQ(limits.front().observedAt, at("2025-06-01T08:00:00Z"));
        const QuotaData quota = quotaDataFrom(response);
        EXPECT_EQ(quota.fiveHourUsagePct, row.fiveHour);
        EXPECT_EQ(quota.fiveHourResetAt, limits.front().resetsAt);
        EXPECT_EQ(quota.sevenDayUsagePct, row.sevenDay);
        EXPECT_EQ(quota.claudeDesignWeeklyPct, row.claudeDesign);
    }
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
