// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/StateFixture.h"
#include "ui/dashboard/MainWindowView.h"
#include "ui/statusbar/StatusBarController.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

namespace burnwick {
namespace {

using test::usageLine;

constexpr auto start = "2025-06-10T12:00:00.000Z";

/// A host that writes down what it is told to show.
class RecordingStatusItem final : public StatusItem {
public:
    explicit RecordingStatusItem(std::vector<std::string> &titles, ActivateHandler &handler)
        : m_titles(titles)
        , m_handler(handler) {}
    void setActivateHandler(ActivateHandler handler) override { m_handler = std::move(handler); }
    void show(const StatusItemContent &content) override { m_titles.push_back(plainText(content.title)); }

private:
    std::vector<std::string> &m_titles;
    ActivateHandler &m_handler;
};

class StateOnScreenTest : public test::StateFixture {
protected:
    StateOnScreenTest() { m_home.add("a.jsonl", usageLine(start, 1200, 0), m_clock.now()); }

    std::unique_ptr<StatusItem> recordingItem() {
        return std::make_unique<RecordingStatusItem>(m_titles, m_clickItem);
    }

    std::vector<std::string> m_titles;
    StatusItem::ActivateHandler m_clickItem;
};

TEST_F(StateOnScreenTest, TheItemShowsEachTitleOnce) {
    const StatusBarController controller(m_state, recordingItem());
    EXPECT_EQ(m_titles, std::vector<std::string>{"0 | $0.00 | s--  ●"});
    m_titles.clear();

    m_state.start();
    EXPECT_TRUE(m_titles.empty()) << "shown before the change has landed";
    ASSERT_TRUE(waitFor([&] { return m_state.historicalData().messageCount == 1; }));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_titles, std::vector<std::string>{"1.2K | $0.0036 | s--  ●"});

    // Other figures change, the title does not.
    m_home.add("a.jsonl", usageLine(start, 1200, 0) + usageLine("2025-06-10T11:00:00.0Z", 0, 0),
               m_clock.now());
    m_state.refreshLocalData();
    QCoreApplication::processEvents();
    EXPECT_EQ(m_titles.size(), 1U);
}

TEST_F(StateOnScreenTest, AClickOnTheItemBringsTheClosedWindowBack) {
    const StatusBarController controller(m_state, recordingItem());
    m_clickItem({}); // there is no window yet

    QWidget other;
    other.setWindowTitle(QStringLiteral("Burnwick settings"));
    MainWindowView window({m_state, m_preferences, m_calendar, m_clock, m_scheduler});
    window.setWindowTitle(mainWindowTitle());
    window.show();
    window.close();
    ASSERT_FALSE(window.isVisible());
    m_clickItem("token");
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(other.isVisible());
    EXPECT_FALSE(qEnvironmentVariableIsSet("XDG_ACTIVATION_TOKEN")) << "programs that we start would use it";

    window.showMinimized();
    m_clickItem({});
    EXPECT_FALSE(window.isMinimized());
}

} // namespace
} // namespace burnwick
