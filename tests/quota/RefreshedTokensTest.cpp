// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "quota/RefreshedTokens.h"

#include "quota/RefreshError.h"
#include "support/ManualClock.h"
#include "json/DecodeError.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using test::at;

TEST(RefreshedTokensTest, LifetimesAreSecondsFromNow) {
    const Instant now = at("2025-06-01T12:00:00Z");
    const struct {
        QByteArray lifetime;
        std::optional<Instant> expiresAt;
    } rows[] = {
        {"3600", at("2025-06-01T13:00:00Z")},
        {"0.5", at("2025-06-01T12:00:00.5Z")},
        {"-60", at("2025-06-01T11:59:00Z")},
        {"1e300", Instant::max()},
        {"-1e300", Instant::min()},
        {R"("3600")", {}},
        {"null", {}},
    };
    for (const auto &row : rows) {
        const auto tokens =
            decodeRefreshedTokens(R"({"access_token":"a","expires_in":)" + row.lifetime + "}", now);
        EXPECT_EQ(tokens, (RefreshedTokens{"a", {}, row.expiresAt})) << row.lifetime.data();
    }
}

TEST(RefreshedTokensTest, OnlyTheAccessTokenIsNeeded) {
    const struct {
        QByteArray body;
        RefreshedTokens expected;
    } rows[] = {
        {R"({"access_token":"a","refresh_token":"r","scope":"x"})", {"a", "r", {}}},
        {R"({"access_token":"a","refresh_token":7})", {"a", {}, {}}},
        {R"({"access_token":"a","refresh_token":""})", {"a", {}, {}}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(decodeRefreshedTokens(row.body, Instant()), row.expected) << row.body.data();
}

TEST(RefreshedTokensTest, OtherJsonIsAnInvalidResponseAndTheRestIsNone) {
    for (const char *body : {"[]", "{}", R"({"access_token":5})", R"({"access_token":""})"}) {
        try {
            static_cast<void>(decodeRefreshedTokens(body, Instant()));
            ADD_FAILURE() << body;
        } catch (const RefreshError &error) {
            EXPECT_EQ(error.kind(), RefreshError::Kind::invalidResponse) << body;
        }
    }
    for (const char *body : {"", "<html>", R"({"access_token":"a")"})
        EXPECT_THROW(static_cast<void>(decodeRefreshedTokens(body, Instant())), DecodeError) << body;
}

} // namespace
} // namespace burnwick
