// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/OAuthRefresher.h"

#include "quota/FetchError.h"
#include "support/ManualClock.h"
#include "json/DecodeError.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using test::at;

TEST(RefreshedTokensTest, OnlyTheAccessTokenIsRequired) {
    const Instant now = at("2025-06-01T12:00:00Z");
    const struct {
        QByteArray members;
        RefreshedTokens expected;
    } rows[] = {
        {R"("expires_in":3600)", {"a", {}, at("2025-06-01T13:00:00Z")}},
        {R"("expires_in":0.5)", {"a", {}, at("2025-06-01T12:00:00.5Z")}},
        {R"("expires_in":-60)", {"a", {}, at("2025-06-01T11:59:00Z")}},
        {R"("expires_in":1e300)", {"a", {}, at("2125-06-01T18:00:00Z")}},
        {R"("expires_in":-1e300)", {"a", {}, at("1925-06-02T06:00:00Z")}},
        {R"("expires_in":"3600")", {"a", {}, {}}},
        {R"("expires_in":null)", {"a", {}, {}}},
        {R"("refresh_token":"r","scope":"x")", {"a", "r", {}}},
        {R"("refresh_token":7)", {"a", {}, {}}},
        {R"("refresh_token":"")", {"a", {}, {}}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(decodeRefreshedTokens(R"({"access_token":"a",)" + row.members + "}", now), row.expected)
            << row.members.data();
}

TEST(RefreshedTokensTest, OtherJsonIsAnInvalidResponseAndTheRestADecodeError) {
    for (const char *body : {"[]", "{}", R"({"access_token":5})", R"({"access_token":""})"}) {
        try {
            static_cast<void>(decodeRefreshedTokens(body, Instant()));
            ADD_FAILURE() << body;
        } catch (const RefreshError &error) {
            EXPECT_EQ(error.kind(), RefreshFailure::invalidResponse) << body;
        }
    }
    for (const char *body : {"", "<html>", R"({"access_token":"a")"})
        EXPECT_THROW(static_cast<void>(decodeRefreshedTokens(body, Instant())), DecodeError) << body;
}

} // namespace
} // namespace burnwick
