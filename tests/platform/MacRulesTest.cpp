// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/macos/rules/LoginItemRules.h"
#include "platform/macos/rules/NumberRules.h"

#include <gtest/gtest.h>

#include <limits>
#include <optional>

namespace burnwick {
namespace {

using Service = LoginItemService;
using Step = LoginItemStep;

TEST(MacLoginItemRules, AnEarlierChoiceIsAppliedUnlessTheUserSwitchedTheItemOffElsewhere) {
    const struct {
        Service service;
        LoginItemState state;
        Step on, off;
    } rows[] = {
        {Service::notFound, LoginItemState::off, Step::registerItem, Step::keep},
        {Service::notRegistered, LoginItemState::off, Step::registerItem, Step::keep},
        {Service::enabled, LoginItemState::on, Step::keep, Step::unregisterItem},
        {Service::requiresApproval, LoginItemState::requiresApproval, Step::keep, Step::keep},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(stateOf(row.service), row.state);
        EXPECT_EQ(stepToRestore(true, row.service), row.on);
        EXPECT_EQ(stepToRestore(false, row.service), row.off);
    }
}

TEST(MacLoginItemRules, AStepThatIsDoneAlreadyOrWaitsForApprovalIsNoFailure) {
    constexpr long notFound = 6;
    constexpr long deniedByUser = 11;
    constexpr long alreadyRegistered = 12;
    const struct {
        Step step;
        bool succeeded;
        std::optional<long> code;
        bool fails;
    } rows[] = {
        {Step::registerItem, true, std::nullopt, false},
        {Step::registerItem, false, std::nullopt, true},
        {Step::registerItem, false, deniedByUser, false},
        {Step::registerItem, false, alreadyRegistered, false},
        {Step::registerItem, false, notFound, true},
        {Step::unregisterItem, false, notFound, false},
        {Step::unregisterItem, false, alreadyRegistered, true},
        {Step::unregisterItem, false, deniedByUser, true},
    };
    for (const auto &row : rows) {
        const auto failure = failureOf(row.step, row.succeeded, row.code, "why");
        EXPECT_EQ(failure ? failure->reason : "", row.fails ? "why" : "") << row.code.value_or(0);
    }
}

TEST(MacNumberRules, WholeNumbersOf64BitsAreIntegers) {
    constexpr double twoTo63 = 9223372036854775808.0;
    const struct {
        double number;
        UserDefaults::Value value;
    } rows[] = {
        {0, qint64{0}},
        {-3, qint64{-3}},
        {0.5, 0.5},
        {-twoTo63, std::numeric_limits<qint64>::min()},
        {twoTo63, twoTo63},
        {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()},
    };
    for (const auto &row : rows)
        EXPECT_EQ(valueOf(row.number), row.value) << row.number;
    EXPECT_TRUE(std::holds_alternative<double>(valueOf(std::numeric_limits<double>::quiet_NaN())));
}

} // namespace
} // namespace burnwick
