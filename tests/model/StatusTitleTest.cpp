// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "model/StatusTitle.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

constexpr auto regular = TitleSegment::Weight::regular;
constexpr auto semibold = TitleSegment::Weight::semibold;
constexpr auto heavy = TitleSegment::Weight::heavy;

QuotaData quotaAt(double pct) {
    QuotaData quota;
    quota.fiveHourUsagePct = pct;
    return quota;
}

TEST(StatusTitle, StylesEverySegment) {
    const StatusTitle title =
        buildStatusTitle({1'234'567, 0, 0, 0}, 4.5, quotaAt(67), StatusIndicator::orange);
    const StatusTitle expected{
        {"1.2", semibold, false, {}},  {"M", regular, false, {}},
        {" | ", regular, true, {}},    {"$", regular, false, {}},
        {"4.50", semibold, false, {}}, {" | ", regular, true, {}},
        {"s", semibold, true, {}},     {"67%", heavy, false, {}},
        {"  ", regular, false, {}},    {"●", heavy, false, RgbColor{0.99, 0.74, 0.18}},
    };
    EXPECT_EQ(title, expected);
}

TEST(StatusTitle, ReadsAsPlainText) {
    const auto plain = [](const SessionTokens &tokens, double cost, std::optional<QuotaData> quota) {
        return plainText(buildStatusTitle(tokens, cost, quota, StatusIndicator::green));
    };
    EXPECT_EQ(plain({}, 0, std::nullopt), "0 | $0.00 | s--  ●");
    EXPECT_EQ(plain({250, 250, 250, 249}, 0.004, quotaAt(0.4)), "999 | $0.0040 | s0%  ●");
    EXPECT_EQ(plain({1000, 0, 0, 0}, 0.01, quotaAt(130)), "1.0K | $0.01 | s130%  ●");
}

} // namespace
} // namespace burnwick
