// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/statusbar/StatusBarController.h"

#include "support/StateFixture.h"

namespace burnwick {
namespace {

/// Records the titles.
class RecordingStatusItem final : public StatusItem {
public:
    explicit RecordingStatusItem(std::vector<std::string> &titles)
        : m_titles(titles) {}
    void setActivateHandler(ActivateHandler) override {}
    void show(const StatusItemContent &content) override { m_titles.push_back(plainText(content.title)); }

private:
    std::vector<std::string> &m_titles;
};

class StatusBarControllerTest : public test::StateFixture {};

TEST_F(StatusBarControllerTest, TheItemGetsEachTitleOnce) {
    const std::string line = test::usageLine("2025-06-10T12:00:00.000Z", 1200, 0);
    m_home.add("a.jsonl", line, m_clock.now());
    std::vector<std::string> titles;
    const StatusBarController controller(m_state, std::make_unique<RecordingStatusItem>(titles), {});
    m_state.start();
    EXPECT_EQ(titles.size(), 1U) << "shown before the change";
    ASSERT_TRUE(historyHas(1));
    QCoreApplication::processEvents();
    const std::vector<std::string> expected{"0 | $0.00 | s--  ●", "1.2K | $0.0036 | s--  ●"};
    EXPECT_EQ(titles, expected);

    // Another message leaves the title as it is.
    m_home.add("a.jsonl", line + test::usageLine("2025-06-10T11:00:00.0Z", 0, 0), m_clock.now());
    m_state.refreshLocalData();
    QCoreApplication::processEvents();
    EXPECT_EQ(titles, expected);
}

} // namespace
} // namespace burnwick
