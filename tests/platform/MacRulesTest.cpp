// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/macos/rules/LoginItemRules.h"
#include "platform/macos/rules/NumberRules.h"
#include "platform/macos/rules/TreeEventRules.h"

#include <gtest/gtest.h>

#include <limits>

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

TEST(MacLoginItemRules, AStepSucceedsByTheStatusAfterIt) {
    const struct {
        Service after;
        bool registered, unregistered;
    } rows[] = {
        {Service::notFound, false, true},
        {Service::notRegistered, false, true},
        {Service::enabled, true, false},
        {Service::requiresApproval, true, true},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(hasSucceeded(Step::registerItem, row.after), row.registered);
        EXPECT_EQ(hasSucceeded(Step::unregisterItem, row.after), row.unregistered);
        EXPECT_TRUE(hasSucceeded(Step::keep, row.after));
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

TEST(MacTreeEventRules, OnlyAnEventOfAFileBelowTheRootThatLostNothingIsThatFile) {
    using namespace fsevents;
    constexpr std::uint32_t itemModified = 0x1000;
    const struct {
        const char *path;
        std::uint32_t flags;
        const char *file; ///< null for everything
    } rows[] = {
        {"/private/logs/a/log", itemModified | ItemIsFile, "/logs/a/log"},
        {"/private/logs/log", ItemIsSymlink, "/logs/log"},
        {"/private/logs/a", itemModified | ItemIsDir, nullptr},
        {"/private/logs/a", ItemIsDir | ItemIsFile, nullptr},
        {"/private/logs/a", 0, nullptr},
        {"/private/logs", ItemIsFile, nullptr},
        {"/private/logs2/log", ItemIsFile, nullptr},
        {"/private/mail/log", ItemIsFile, nullptr},
        {"/private/logs/log", ItemIsFile | MustScanSubDirs, nullptr},
        {"/private/logs/log", ItemIsFile | UserDropped, nullptr},
        {"/private/logs/log", ItemIsFile | KernelDropped, nullptr},
        {"/private/logs/log", ItemIsFile | EventIdsWrapped, nullptr},
        {"/private/logs/log", ItemIsFile | RootChanged, nullptr},
        {"/private/logs/log", ItemIsFile | Mount, nullptr},
        {"/private/logs/log", ItemIsFile | Unmount, nullptr},
    };
    for (const auto &row : rows) {
        TreeChanges changes;
        addTreeEvent(changes, {{"/other", "/Volumes/other"}, {"/logs", "/private/logs"}}, row.path,
                     row.flags);
        EXPECT_EQ(changes.isEverything, row.file == nullptr) << row.path << ' ' << row.flags;
        EXPECT_EQ(changes.files.contains(row.file != nullptr ? row.file : ""), row.file != nullptr);
    }
}

} // namespace
} // namespace burnwick
