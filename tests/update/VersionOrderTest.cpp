// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "update/VersionOrder.h"

#include <gtest/gtest.h>

#include <QString>

namespace burnwick {
namespace {

TEST(VersionOrderTest, ComparesNumbersByValueAndTheRestAsItStands) {
    constexpr auto less = std::weak_ordering::less;
    constexpr auto same = std::weak_ordering::equivalent;
    const struct {
        const char *left;
        const char *right;
        std::weak_ordering order;
    } rows[] = {
        {"1.9.2", "1.10.0", less},
        {"1.0.0", "1.0.0", same},
        {"", "0", less},
        // any number of parts
        {"1.0.0", "1.0.0.1", less},
        // leading zeros
        {"1.01", "1.1", same},
        {"1.01.5", "1.1.4", std::weak_ordering::greater},
        // beyond 64 bits
        {"18446744073709551615", "18446744073709551616", less},
        {"000099999999999999999999", "100000000000000000000", less},
        // text
        {"1.0-beta2", "1.0-beta10", less},
        {"1.0-RC", "1.0-beta", less},
        {"9", "v1", less},
        // spaces count, wherever they are
        {" 2.0", "1.0", less},
        // only the ten digits are numbers
        {"\u0661\u0660", "\u0669", less},
    };
    for (const auto &row : rows) {
        const QString left = QString::fromUtf8(row.left);
        const QString right = QString::fromUtf8(row.right);
        EXPECT_TRUE(compareVersions(left, right) == row.order) << row.left << " and " << row.right;
        EXPECT_TRUE(compareVersions(right, left) == (0 <=> row.order)) << row.right << " and " << row.left;
    }
}

} // namespace
} // namespace burnwick
