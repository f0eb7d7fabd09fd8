// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/LimitsCard.h"
#include "model/Snapshot.h"
#include "support/LimitCourses.h"
#include "support/PaintCount.h"
#include "support/VisibleControls.h"
#include "ui/charts/LimitChartView.h"
#include "ui/dashboard/ActivityTabs.h"
#include "ui/dashboard/LivePanels.h"
#include "ui/dashboard/StatTile.h"

#include <gtest/gtest.h>

#include <QAbstractButton>
#include <QLabel>
#include <QLayout>
#include <QTest>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

const Instant now = std::chrono::sys_days(std::chrono::year(2026) / 11 / 21) + 12h + 55min;
const Calendar utc = Calendar::inZone("UTC");

LimitCourse courseOf(Limit::Kind kind, const std::string &model = {}) {
    LimitCourse course =
        test::courseThrough(kind, now + windowLengthOf(kind) - 175min, {{0min, 0}, {175min, 40}});
    course.limit.model = model;
    return course;
}

const LimitCourse session = courseOf(Limit::Kind::session);
const LimitCourse weekly = courseOf(Limit::Kind::weekly);

LimitCourse scoped(const std::string &model) {
    return courseOf(Limit::Kind::weeklyScoped, model);
}

class LimitsCardTest : public testing::Test {
protected:
    LimitsCardTest() {
        m_card.setFixedWidth(760);
        m_card.resize(760, 232);
        m_card.show();
    }
    void set(const std::vector<LimitCourse> &courses, Instant at = now) {
        m_card.setCourses(courses, utc, at);
    }
    /// The names of the chips, "*" before the chosen one.
    std::string chips() {
        QStringList names;
        for (const auto *chip : m_card.findChildren<QAbstractButton *>()) {
            if (chip->isVisible())
                names << (chip->isChecked() ? QStringLiteral("*") : QString()) + chip->accessibleName();
        }
        return names.join(u'|').toStdString();
    }
    [[nodiscard]] std::string shown() const {
        return m_card.findChild<LimitChartView *>()->accessibleName().toStdString();
    }

    LimitsCard m_card;
};

TEST_F(LimitsCardTest, TheChosenLimitSurvivesUpdatesUntilItDisappears) {
    set({session});
    EXPECT_EQ(chips(), "") << "nothing to choose";
    const auto chartTop = [this] {
        QCoreApplication::processEvents();
        return m_card.findChild<LimitChartView *>()->y();
    };
    const int top = chartTop();
    set({session, weekly, scoped("Sonnet"), scoped("Opus")});
    EXPECT_EQ(chartTop(), top) << "the chart moves";
    EXPECT_EQ(chips(), "*Session|Weekly|Sonnet|Opus");
    test::press(m_card, QAccessible::RadioButton, "Opus");
    EXPECT_EQ(shown(), "Opus limit");
    set({session, scoped("Opus"), weekly});
    EXPECT_EQ(chips(), "Session|*Opus|Weekly");
    EXPECT_EQ(shown(), "Opus limit");
    test::press(m_card, QAccessible::RadioButton, "Weekly");
    EXPECT_EQ(shown(), "Weekly limit");
    set({session, scoped("Opus")});
    EXPECT_EQ(chips(), "*Session|Opus");
    EXPECT_EQ(shown(), "Session limit");
}

TEST_F(LimitsCardTest, ManyLongNamesAreElidedWithoutWideningTheCard) {
    std::vector<LimitCourse> courses{session};
    for (int i = 0; i < 20; ++i)
        courses.push_back(scoped("R&D model with a long name, the " + std::to_string(i) + "th"));
    set(courses);
    QCoreApplication::processEvents();
    EXPECT_LE(m_card.minimumSizeHint().width(), 760);
    const auto *first = m_card.findChildren<QAbstractButton *>().at(1);
    EXPECT_TRUE(first->text().contains(QChar(0x2026)) && first->text().startsWith(QStringLiteral("R&&D")))
        << first->text().toStdString();
    EXPECT_EQ(first->accessibleDescription(), first->accessibleName());

    set({session, weekly});
    QCoreApplication::processEvents();
    courses = {session};
    for (const char *name : {"Claude Design", "Sonnet", "Opus", "Some model with a really long name", "A & B",
                             "Haiku", "One more", "And another"})
        courses.push_back(scoped(name));
    set(courses);
    QCoreApplication::processEvents();
    for (const auto *chip : m_card.findChildren<QAbstractButton *>())
        EXPECT_EQ(chip->width(), chip->sizeHint().width()) << chip->text().toStdString();
}

TEST_F(LimitsCardTest, RepaintsOnlyForOtherValuesOrInAnotherMinute) {
    set({session, weekly});
    test::PaintCount paints(m_card);
    paints.take();
    set({session, weekly}, now + 59s);
    EXPECT_EQ(paints.take(), 0);
    set({session, weekly}, now + 60s);
    EXPECT_GT(paints.take(), 0);
}

TEST_F(LimitsCardTest, TheKeyboardReachesTheChosenChipAndThenTheChart) {
    set({session, weekly});
    set({session, weekly, scoped("Sonnet")});
    m_card.setFocusPolicy(Qt::ClickFocus);
    m_card.setFocus(); // so that no control has the focus at first
    m_card.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&m_card));
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(m_card.focusWidget(), key);
        return m_card.focusWidget()->accessibleName().toStdString();
    };
    EXPECT_EQ(press(Qt::Key_Tab), "Session");
    EXPECT_EQ(press(Qt::Key_Right), "Weekly");
    EXPECT_EQ(press(Qt::Key_Right), "Sonnet");
    EXPECT_EQ(shown(), "Sonnet limit");
    EXPECT_EQ(press(Qt::Key_Tab), "Sonnet limit");
}

TEST_F(LimitsCardTest, DescribesTheChosenLimit) {
    set({session});
    const QString words = m_card.accessibleDescription();
    EXPECT_TRUE(words.startsWith(QStringLiteral("Probably "))) << words.toStdString();
    EXPECT_TRUE(words.endsWith(QStringLiteral(". 14% in the last hour"))) << words.toStdString();
    EXPECT_EQ(m_card.findChild<LimitChartView *>()->accessibleDescription(), words);
    EXPECT_EQ(m_card.accessibleName(), QStringLiteral("Limits, Session"));
}

TEST(OverviewTabTest, LimitsTakeRoomFromTilesAndGiveItToANote) {
    OverviewTab tab;
    tab.layout()->setSpacing(12);
    auto *note = new QWidget;
    note->setFixedHeight(38);
    note->hide();
    tab.addNote(note);
    tab.show();
    const auto show = [&](const std::vector<LimitCourse> &courses, bool hasNote, bool areAwaited = false) {
        tab.setLimits(courses, areAwaited, utc, now);
        note->setVisible(hasNote);
        QCoreApplication::processEvents();
        return std::pair(tab.findChild<StatTile *>()->height(), tab.sizeHint().height());
    };
    const auto without = show({}, false);
    EXPECT_EQ(without.first, 92);
    const auto awaiting = show({}, false, true);
    const auto with = show({session}, false);
    EXPECT_EQ(with.first, 76);
    EXPECT_EQ(awaiting, with);
    EXPECT_EQ(with.second - without.second, 232 + 12 - 2 * 16);
    EXPECT_EQ(show({session}, true), with);
    EXPECT_EQ(show({}, false), without);
}

TEST(WindowQuotaPanelTest, KeepsItsHeightWithRowsForModels) {
    AccountFigures account;
    account.quotaData = QuotaData{.fiveHourUsagePct = 67,
                                  .fiveHourResetAt = now + 2h,
                                  .sevenDayResetAt = now + 50h,
                                  .claudeDesignResetAt = now + 50h};
    account.extraUsage = ExtraUsageData{};
    WindowQuotaPanel panel;
    panel.show();
    const auto show = [&](const std::vector<LimitCourse> &courses) {
        account.limits.clear();
        for (const LimitCourse &course : courses)
            account.limits.push_back(course.limit);
        panel.setAccount(account, utc, now);
        QCoreApplication::processEvents();
        return test::namesIn(panel).filter(QStringLiteral("used, resets in"));
    };
    const std::vector<LimitCourse> many{session,          weekly,         scoped("Claude Design"),
                                        scoped("Sonnet"), scoped("Opus"), scoped("\n"),
                                        scoped("Haiku")};
    EXPECT_EQ(show({session, weekly}).size(), 3);
    const int height = panel.sizeHint().height();
    EXPECT_EQ(show({session, scoped("Sonnet")}).last().toStdString(), "Sonnet: 40% used, resets in 6d 21h");
    EXPECT_EQ(panel.sizeHint().height(), height);
    EXPECT_EQ(show(many).size(), 5);
    EXPECT_EQ(panel.sizeHint().height(), height);
    account.extraUsage.reset();
    EXPECT_EQ(show(many).size(), 6);
    EXPECT_EQ(show(many).filter(QStringLiteral("Claude Design")).size(), 1);
    EXPECT_EQ(show({}).size(), 3);
    EXPECT_EQ(panel.sizeHint().height(), height);

    EXPECT_EQ(panel.toolTip(), QString());
    account.isQuotaStale = true;
    account.quotaReadAt = now - 50min;
    const auto isDimmed = [&panel] {
        const auto labels = panel.findChildren<QLabel *>();
        const auto used = std::ranges::find(labels, QStringLiteral("67% used"), &QLabel::text);
        return (*used)->foregroundRole() == QPalette::PlaceholderText;
    };
    EXPECT_FALSE(isDimmed());
    show({});
    EXPECT_TRUE(panel.toolTip().contains(QStringLiteral("as of 12:05")));
    EXPECT_TRUE(isDimmed());
}

} // namespace
} // namespace burnwick
