// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "model/StatusIndicator.h"
#include "support/XfcePanel.h"

#include <cmath>

namespace burnwick {
namespace {

struct PanelSession {
    test::XfcePanel m_panel;
};

/// The real program beside a real status area.
class PanelTest : protected PanelSession, public test::AccountFixture {
protected:
    PanelTest()
        : AccountFixture(m_panel.bus()) {
        showOn(m_panel.display().name());
    }

    /// The dot of the item.
    [[nodiscard]] std::optional<QPoint> dot(StatusIndicator indicator) const {
        const auto [red, green, blue] = colorOf(indicator);
        std::uint32_t color = 0;
        for (const double part : {red, green, blue})
            color = color << 8 | static_cast<std::uint32_t>(std::lround(part * 0xFF));
        return m_panel.find(color);
    }
    void closeWindow() {
        m_panel.display().close("Burnwick");
        ASSERT_TRUE(waitFor([this] { return !m_panel.display().shows("Burnwick"); }));
    }
};

TEST_F(PanelTest, TheItemShowsTheQuotaOpensTheWindowAndOutlivesThePanel) {
    m_server.script("/api/oauth/usage", {test::usage(95)});
    logIn();
    m_program.start(QStringLiteral(BURNWICK_PROGRAM), QStringList());
    ASSERT_TRUE(waitFor([this] { return m_panel.display().shows("Burnwick"); }));
    for (const char *panel : {"the panel starts after the program", "and once more"}) {
        SCOPED_TRACE(panel);
        m_panel.start();
        ASSERT_TRUE(waitFor([this] { return m_panel.items().size() == 1; }));
        ASSERT_TRUE(waitFor([this] { return dot(StatusIndicator::red).has_value(); }));
        EXPECT_FALSE(dot(StatusIndicator::green));
        closeWindow();
        EXPECT_TRUE(m_panel.display().click(*dot(StatusIndicator::red)));
        EXPECT_TRUE(waitFor([this] { return m_panel.display().shows("Burnwick"); }));
        m_panel.end();
        ASSERT_TRUE(waitFor([this] { return !dot(StatusIndicator::red); }));
    }
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

} // namespace
} // namespace burnwick
