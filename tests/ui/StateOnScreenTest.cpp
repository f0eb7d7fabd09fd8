// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/StateFixture.h"
#include "ui/dashboard/MainWindowView.h"
#include "ui/dashboard/StatTile.h"
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
    void rewriteLog(const std::string &lines) {
        m_home.add("a.jsonl", lines, m_clock.now());
        m_state.refreshLocalData();
    }
    MainWindowView::Services windowServices() {
        return {m_state, m_preferences, m_calendar, m_clock, m_scheduler};
    }
    static QStringList tileTexts(const QWidget &window) {
        QStringList texts;
        for (const StatTile *tile : window.findChildren<StatTile *>())
            texts << tile->accessibleName();
        return texts;
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
    rewriteLog(usageLine(start, 1200, 0) + usageLine("2025-06-10T11:00:00.0Z", 0, 0));
    QCoreApplication::processEvents();
    EXPECT_EQ(m_titles.size(), 1U);
}

TEST_F(StateOnScreenTest, AClickOnTheItemBringsTheClosedWindowBack) {
    const StatusBarController controller(m_state, recordingItem());
    m_clickItem({}); // there is no window yet

    QWidget other;
    other.setWindowTitle(QStringLiteral("Burnwick settings"));
    MainWindowView window(windowServices());
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

TEST_F(StateOnScreenTest, TheWindowShowsTheTwelveFiguresAndFollowsThem) {
    MainWindowView window(windowServices());
    const QStringList before = tileTexts(window);
    ASSERT_EQ(before.size(), 12);
    EXPECT_EQ(before.first(), QStringLiteral("Sessions: 0"));

    m_state.start();
    ASSERT_TRUE(waitFor([&] { return tileTexts(window).first() == QLatin1String("Sessions: 1"); }));
    const QStringList expected{QStringLiteral("Sessions: 1"),
                               QStringLiteral("Messages: 1"),
                               QStringLiteral("Total tokens: 1.2K"),
                               QStringLiteral("Active days: 1"),
                               QStringLiteral("Cache Effective: 0%"),
                               QStringLiteral("Input: 1.2K"),
                               QStringLiteral("Session Cost: $0.0036"),
                               QStringLiteral("Current streak: 1d"),
                               QStringLiteral("Longest streak: 1d"),
                               QStringLiteral("Peak hour: 12 PM"),
                               QStringLiteral("Favorite model: Sonnet"),
                               QStringLiteral("Output: 0")};
    EXPECT_EQ(tileTexts(window), expected);
}

} // namespace
} // namespace burnwick
