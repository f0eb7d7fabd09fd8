// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/Dunst.h"
#include "platform/linux/notifications/LinuxNotificationCenter.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <optional>
#include <vector>

namespace burnwick {
namespace {

/// What dunst shows, and that it is started again after a crash, is tested by DayOfUseTest.
TEST(DunstTest, AClickIsAnnounced) {
    const QString centerName = QStringLiteral("dunst-client");
    const test::Dunst dunst;
    {
        LinuxNotificationCenter center(dunst.bus().connect(centerName));
        std::vector<std::string> clicks;
        center.setActivateHandler([&](const std::string &token) { clicks.push_back(token); });
        std::optional<std::string> outcome;
        center.add({"updateAvailable", "Update Available", "Burnwick <b>2</b> & more"},
                   [&](const auto &error) { outcome = error.value_or("none"); });
        ASSERT_TRUE(waitFor([&] { return outcome.has_value(); }));
        EXPECT_EQ(*outcome, "none");
        EXPECT_TRUE(waitFor([&] { return dunst.displayed() == 1; }));
        dunst.click();
        EXPECT_TRUE(waitFor([&] { return !clicks.empty(); }));
        EXPECT_EQ(clicks, std::vector<std::string>(1));
        EXPECT_TRUE(dunst.closeAll().value(0).contains(QStringLiteral("&lt;b&gt;2&lt;/b&gt; &amp; more")));
    }
    QDBusConnection::disconnectFromBus(centerName);
}

} // namespace
} // namespace burnwick
