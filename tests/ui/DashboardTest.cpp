// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PaintCount.h"
#include "support/Screens.h"
#include "support/VisibleControls.h"
#include "ui/DashboardScenes.h"
#include "ui/controls/FocusRing.h"
#include "ui/controls/PanelCard.h"
#include "ui/dashboard/AccountBar.h"
#include "ui/dashboard/DashboardButtons.h"
#include "ui/dashboard/ModelStatRowView.h"
#include "ui/layout/FittedArea.h"
#include "ui/statusbar/StatusBarController.h"
#include "ui/theme/QuietStyle.h"

#include <QAbstractButton>
#include <QApplication>
#include <QFontDatabase>
#include <QScrollBar>
#include <QShortcut>
#include <QTest>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::namesIn;

bool anyStartsWith(const QStringList &names, const std::string &text) {
    const QString wanted = QString::fromStdString(text);
    return std::any_of(names.begin(), names.end(),
                       [&](const QString &name) { return name.startsWith(wanted); });
}

/// A host that writes down what it is told to show.
class RecordingStatusItem final : public StatusItem {
public:
    explicit RecordingStatusItem(std::vector<std::string> &titles)
        : m_titles(titles) {}
    void setActivateHandler(ActivateHandler) override {}
    void show(const StatusItemContent &content) override { m_titles.push_back(plainText(content.title)); }

private:
    std::vector<std::string> &m_titles;
};

class DashboardTest : public test::DashboardFixture {
protected:
    QAbstractButton &button(QWidget &window, const char *text) {
        for (auto *candidate : window.findChildren<QAbstractButton *>()) {
            if (candidate->text() == QString::fromUtf8(text))
                return *candidate;
        }
        throw std::logic_error("no such button");
    }
    static bool comesToRest(test::PaintCount &paints) {
        return waitFor([&paints] {
            QTest::qWait(20); // a window that grew is painted once more when its screen says so
            return paints.take() == 0;
        });
    }
    std::size_t usageRequests() { return m_server.requestsFor("/api/oauth/usage").size(); }
};

class DashboardSceneTest : public test::DashboardFixture,
                           public testing::WithParamInterface<test::DashboardScene> {};

TEST_P(DashboardSceneTest, SaysWhatIsSo) {
    const test::DashboardScene &scene = GetParam();
    MainWindowView window(windowServices());
    play(scene, window);
    const QStringList names = namesIn(window);
    for (const std::string &text : scene.texts)
        EXPECT_TRUE(anyStartsWith(names, text)) << text << " in\n" << names.join(u'\n').toStdString();
    for (const std::string &text : scene.absent)
        EXPECT_FALSE(anyStartsWith(names, text)) << text;
    EXPECT_EQ(test::namesWithoutRole(window).join(u'\n').toStdString(), "");
    EXPECT_FALSE(test::descriptionsIn(window).join(u'\n').contains(QStringLiteral("<p")))
        << "markup of a tool tip";
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&window)->role(), QAccessible::Window);
}

/// The application's fonts of common desktops, as far as they are here.
QStringList commonFamilies() {
    QStringList families{QStringLiteral("DejaVu Sans"), QStringLiteral("Noto Sans"), QStringLiteral("Inter")};
    families.removeIf([](const QString &family) { return !QFontDatabase::hasFamily(family); });
    return families;
}

TEST_P(DashboardSceneTest, FitsOnALowScreenAndScrollsOneWayOnALowerOne) {
    const QFont before = QApplication::font();
    QApplication::setStyle(new QuietStyle);
    {
        MainWindowView window(windowServices());
        play(GetParam(), window);
    }
    for (const QString &family : commonFamilies()) {
        QApplication::setFont(QFont(family));
        int regularHeight = 0;
        for (const std::string_view name : {"common", "low", "very low"}) {
            SCOPED_TRACE(family.toStdString() + " on " + std::string(name));
            MainWindowView window(windowServices());
            test::moveTo(test::screenNamed(name), window);
            window.show();
            const QSize first = window.size();
            QTest::keyClick(&window, GetParam().tab == 0 ? Qt::Key_1 : Qt::Key_2, Qt::ControlModifier);
            QCoreApplication::processEvents();
            EXPECT_EQ(window.size(), first);
            const auto *area = window.findChild<FittedArea *>();
            const auto *bar = window.findChild<AccountBar *>();
            constexpr int frameHeight = 40;
            EXPECT_LE(window.height(), window.screen()->availableGeometry().height() - frameHeight);
            EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
            EXPECT_EQ(window.width() - bar->width(), 2 * bar->mapTo(&window, QPoint()).x());
            if (name == "common")
                regularHeight = window.height();
            else
                EXPECT_LT(window.height(), regularHeight);
            if (name != "very low") {
                EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
            }
        }
    }
    QApplication::setFont(before);
    QApplication::setStyle(QStringLiteral("Fusion"));
}

INSTANTIATE_TEST_SUITE_P(Scenes, DashboardSceneTest, testing::ValuesIn(test::dashboardScenes()),
                         [](const auto &scene) {
                             std::string name = scene.param.name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST_F(DashboardTest, NothingIsPaintedAnewForValuesThatStay) {
    addHistory().logIn(67);
    MainWindowView window(windowServices());
    window.show();
    settle();
    ASSERT_TRUE(waitFor([&] { return anyStartsWith(namesIn(window), "Session: 67% used"); }));
    test::PaintCount paints(window);
    ASSERT_TRUE(comesToRest(paints));
    m_state.refreshLocalData();
    m_scheduler.fire(300s);
    ASSERT_TRUE(waitFor([this] { return usageRequests() == 2; }));
    EXPECT_EQ(paints.take(), 0);
}

TEST_F(DashboardTest, TheWindowKeepsItsSizeAtTheFirstAnswer) {
    addHistory().logInSlowly(67).begin();
    MainWindowView window(windowServices());
    window.show();
    test::PaintCount paints(window);
    ASSERT_TRUE(comesToRest(paints));
    const QSize awaiting = window.size();
    m_server.release();
    ASSERT_TRUE(waitFor([&] { return anyStartsWith(namesIn(window), "Session: 67% used"); }));
    ASSERT_TRUE(comesToRest(paints));
    EXPECT_EQ(window.size(), awaiting);
}

TEST_F(DashboardTest, TheTimesMoveWhileTheWindowIsVisible) {
    logIn(67).settle();
    MainWindowView window(windowServices());
    window.show();
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Updated just now"));
    // 12:00:01, so the full minute is 59 seconds away.
    m_clock.advance(59s);
    m_scheduler.fire(59s);
    m_clock.advance(60s);
    m_scheduler.fire(60s);
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Updated 1 minute ago"));
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Session: 67% used, resets in 2h 3m"));

    // A timer that the clock overtook: the minute is not over yet.
    m_clock.advance(59s);
    m_scheduler.fire(60s);
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Updated 1 minute ago"));
    m_clock.advance(1s);
    m_scheduler.fire(1s);
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Updated 2 minutes ago"));

    const auto whileVisible = m_scheduler.intervals().size();
    window.hide();
    EXPECT_EQ(m_scheduler.intervals().size(), whileVisible - 1) << "a hidden window needs no timer";
    m_clock.advance(60min);
    window.show();
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Updated 1h ago"));
}

TEST_F(DashboardTest, TheHeatmapFollowsTheTimeZoneWithTheNextMinuteAndWhenShown) {
    addHistory().settle();
    m_state.setTimeFilter(TimeFilter::sevenDays);
    MainWindowView window(windowServices());
    window.show();
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Activity since Jun 3: "));
    m_calendar = Calendar::inZone("Pacific/Kiritimati"); // where it is tomorrow already
    m_clock.advance(59s);
    m_scheduler.fire(59s);
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Activity since Jun 4: "));
    window.hide();
    m_calendar = Calendar::inZone("UTC");
    window.show();
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Activity since Jun 3: "));
}

TEST_F(DashboardTest, FiltersAndTabsAreChosenAndAClosedWindowOpensOnTheFirstTab) {
    addHistory().settle();
    MainWindowView window(windowServices());
    window.show();
    button(window, "7d").click();
    EXPECT_EQ(usage().timeFilter, TimeFilter::sevenDays);
    QCoreApplication::processEvents();
    EXPECT_TRUE(button(window, "7d").isChecked());
    EXPECT_FALSE(button(window, "All").isChecked());
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Active days: 7"));
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Activity since Jun 3: 7 active days"));

    QTest::keyClick(&window, Qt::Key_2, Qt::ControlModifier);
    EXPECT_TRUE(button(window, "Models").isChecked());
    EXPECT_FALSE(anyStartsWith(namesIn(window), "Sessions: "));
    QTest::keyClick(&window, Qt::Key_W, Qt::ControlModifier);
    EXPECT_FALSE(window.isVisible());
    window.show();
    EXPECT_TRUE(button(window, "Overview").isChecked());
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Sessions: "));
}

TEST_F(DashboardTest, RetryAsksAlsoWhereNothingIsAskedByItself) {
    logIn(67);
    m_preferences.setAutoRefreshQuota(false);
    MainWindowView window(windowServices());
    window.show();
    m_state.start();
    EXPECT_EQ(usageRequests(), 0U);
    button(window, "Retry").click();
    ASSERT_TRUE(waitFor([this] { return account().oauthStatus == OAuthStatus::connected; }));
    QCoreApplication::processEvents();
    QTest::keyClick(&window, Qt::Key_R, Qt::ControlModifier);
    EXPECT_TRUE(waitFor([this] { return usageRequests() == 2; }));
}

TEST_F(DashboardTest, TheKeyboardReachesEverythingInReadingOrder) {
    addHistory().settle();
    MainWindowView window(windowServices());
    window.show();
    window.activateWindow();
    ASSERT_TRUE(waitFor([&] { return window.isActiveWindow(); }));
    const auto *ring = window.findChild<FocusRing *>();
    EXPECT_FALSE(ring->isVisible()) << "before the keyboard was used";
    // Of a group the chosen one; the arrow keys choose another.
    for (const auto &[key, tab] :
         {std::pair(Qt::Key_1, QStringLiteral("Overview")), {Qt::Key_2, QStringLiteral("Models")}}) {
        QTest::keyClick(&window, key, Qt::ControlModifier);
        QStringList order;
        for (int i = 0; i < 5; ++i) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            const auto *focused = qobject_cast<QAbstractButton *>(QApplication::focusWidget());
            ASSERT_TRUE(focused != nullptr && ring->isVisible());
            EXPECT_EQ(ring->geometry().center(), focused->mapTo(&window, focused->rect().center()));
            order << (focused->text().isEmpty() ? focused->accessibleName() : focused->text());
        }
        EXPECT_EQ(order, (QStringList{QStringLiteral("Settings"), tab, QStringLiteral("All"),
                                      QStringLiteral("Claude"), QStringLiteral("Re-authenticate")}));
    }
    button(window, "All").setFocus();
    QTest::keyClick(&button(window, "All"), Qt::Key_Right);
    EXPECT_EQ(usage().timeFilter, TimeFilter::thirtyDays);
    EXPECT_TRUE(ring->isVisible());

    const QPushButton &clicked = *window.findChild<TabButton *>();
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      clicked.mapTo(&window, clicked.rect().center()));
    EXPECT_TRUE(clicked.hasFocus());
    EXPECT_FALSE(ring->isVisible()) << "a click tells by itself where it went";
}

TEST_F(DashboardTest, TheWindowIsAsWideWhateverTheNamesAre) {
    MainWindowView window(windowServices());
    window.show();
    const int width = window.width();
    addModels(1).settle();
    EXPECT_EQ(window.width(), width);
    EXPECT_TRUE(anyStartsWith(namesIn(window), "Favorite model: b>-with-quite-a-long-name-xxx"));
}

TEST_F(DashboardTest, OneModelLeavesNoBlankBandInItsCard) {
    addModels(1).settle();
    MainWindowView window(windowServices());
    window.show();
    button(window, "Models").click();
    QCoreApplication::processEvents();
    const auto *row = window.findChild<ModelStatRowView *>();
    const QWidget *card = row;
    while (qobject_cast<const PanelCard *>(card) == nullptr)
        card = card->parentWidget();
    EXPECT_EQ(card->height(), row->sizeHint().height() + 2 * row->mapTo(card, QPoint()).y());
}

TEST_F(DashboardTest, TheItemShowsEachTitleOnce) {
    const std::string line = test::usageLine("2025-06-10T12:00:00.000Z", 1200, 0);
    m_home.add("a.jsonl", line, m_clock.now());
    std::vector<std::string> titles;
    const StatusBarController controller(m_state, std::make_unique<RecordingStatusItem>(titles), {});
    m_state.start();
    EXPECT_EQ(titles.size(), 1U) << "shown before the change has landed";
    ASSERT_TRUE(historyHas(1));
    QCoreApplication::processEvents();
    const std::vector<std::string> expected{"0 | $0.00 | s--  ●", "1.2K | $0.0036 | s--  ●"};
    EXPECT_EQ(titles, expected);

    // Other figures change, the title does not.
    m_home.add("a.jsonl", line + test::usageLine("2025-06-10T11:00:00.0Z", 0, 0), m_clock.now());
    m_state.refreshLocalData();
    ASSERT_TRUE(historyHas(2));
    QCoreApplication::processEvents();
    EXPECT_EQ(titles, expected);
}

} // namespace
} // namespace burnwick
