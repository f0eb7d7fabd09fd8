// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/StatusItemTestContent.h"
#include "support/LogCapture.h"
#include "support/PrivateBus.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

// A separate test program, because it ends its bus. LifecycleTest starts the program without a bus.

TEST(StatusItemWithoutBus, SurvivesTheEndOfTheBus) {
    const test::LogCapture log;
    const auto item = platform::makeStatusItem();
    item->show(contentAt(10));
    ASSERT_TRUE(waitFor([&] { return log.lines().filter(QStringLiteral("no status area")).size() == 1; }));
    sessionBusOfTests().kill();
    const auto reports = [&] { return log.lines().filter(QStringLiteral("session bus is gone")).size(); };
    ASSERT_TRUE(waitFor([&] { return reports() > 0; }));
    item->show(contentAt(20));
    EXPECT_EQ(reports(), 1);
}

} // namespace
} // namespace burnwick
