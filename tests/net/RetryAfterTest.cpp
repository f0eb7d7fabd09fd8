// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "net/RetryAfter.h"

#include "support/ManualClock.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

TEST(RetryAfter, SecondsAndHttpDatesBecomeAWaitOfAtLeastZero) {
    const struct {
        QByteArray header;
        std::optional<std::chrono::seconds> wait;
    } rows[] = {
        {"0", 0s},
        {" 1600 ", 1600s},
        {"Tue, 10 Jun 2025 12:26:40 GMT", 1600s},
        {"Tue, 10 Jun 2025 11:00:00 GMT", 0s},
        {"99999999999999999999", 4294967295s},
        {"", {}},
        {"-5", {}},
        {"1.5", {}},
        {"5, 60", {}},
        {"soon", {}},
        {"Tue, 10 Jun 2025 12:26:40", {}},
    };
    for (const auto &row : rows)
        EXPECT_EQ(parseRetryAfter(row.header, test::at("2025-06-10T12:00:00.5Z")), row.wait)
            << row.header.data();
}

} // namespace
} // namespace burnwick
