// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "display/StatusTitle.h"
#include "e2e/AccountFixture.h"
#include "support/XfcePanel.h"

#include <cmath>

namespace burnwick {
namespace {

struct PanelSession {
    test::XfcePanel m_panel;
};

/// The real program beside the real status area of Xfce.
class PanelTest : protected PanelSession, public test::AccountFixture {
protected:
    PanelTest()
        : AccountFixture(m_panel.bus()) {}

    /// Returns the place of the item's dot in that colour on the panel.
    [[nodiscard]] std::optional<QPoint> dot(StatusIndicator indicator) {
        const auto [red, green, blue] = colorOf(indicator);
        std::uint32_t color = 0;
        for (const double part : {red, green, blue})
            color = color << 8 | static_cast<std::uint32_t>(std::lround(part * 0xFF));
        return m_panel.display().find("xfce4-panel", color);
    }
};

TEST_F(PanelTest, TheItemShowsTheQuotaOpensTheWindowAndOutlivesThePanel) {
    test::VirtualDisplay &display = m_panel.display();
    m_server.script("/api/oauth/usage", {test::usage(95)});
    logIn();
    ASSERT_TRUE(launchOn(display));
    for (const char *panel : {"the panel starts after the program", "the panel starts again"}) {
        SCOPED_TRACE(panel);
        m_panel.start();
        ASSERT_TRUE(waitFor([this] { return dot(StatusIndicator::red).has_value(); }));
        EXPECT_FALSE(dot(StatusIndicator::green));
        display.close("Burnwick");
        ASSERT_TRUE(waitFor([&] { return !display.shows("Burnwick"); }));
        EXPECT_TRUE(display.click(*dot(StatusIndicator::red)));
        EXPECT_TRUE(waitFor([&] { return display.shows("Burnwick"); }));
        m_panel.end();
        ASSERT_TRUE(waitFor([this] { return !dot(StatusIndicator::red); }));
    }
    EXPECT_TRUE(endsAt(SIGTERM));
}

} // namespace
} // namespace burnwick
