// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/PaintCount.h"
#include "support/Screens.h"
#include "support/VisibleControls.h"
#include "ui/DashboardScenes.h"
#include "ui/ProjectScenes.h"
#include "ui/charts/ActivityHeatmapView.h"
#include "ui/controls/FocusRing.h"
#include "ui/dashboard/AccountBar.h"
#include "ui/layout/ScrollAreas.h"
#include "ui/theme/QuietStyle.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>

#include <algorithm>
#include <optional>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using test::namesIn;
using test::withExtraUsage;

constexpr const char *question = "Claude Code deletes logs after 30 days. Keep your history?";

class DashboardTest : public test::DashboardFixture {
protected:
    MainWindowView &open() {
        m_window.emplace(windowServices()).show();
        return *m_window;
    }
    /// Whether a visible text starts with that one.
    bool shows(const std::string &text) {
        return std::ranges::any_of(
            namesIn(*m_window),
            [wanted = QString::fromStdString(text)](const QString &name) { return name.startsWith(wanted); });
    }
    QAbstractButton &button(const char *text) {
        const auto buttons = m_window->findChildren<QAbstractButton *>();
        const auto found = std::ranges::find(buttons, QString::fromUtf8(text), &QAbstractButton::text);
        return found != buttons.end() ? **found : throw std::logic_error("no such button");
    }
    void pressWithControl(Qt::Key key) { QTest::keyClick(&*m_window, key, Qt::ControlModifier); }
    /// A window that grew is painted again after its expose event; three turns of the loop without any paint.
    static bool stopsPainting(test::PaintCount &paints) {
        return waitFor([&paints, quietTurns = 0]() mutable {
            quietTurns = paints.take() == 0 ? quietTurns + 1 : 0;
            return quietTurns == 3;
        });
    }
    /// Advances the clock to the minute and fires its timer.
    void passUntilMinute(std::chrono::seconds time) {
        m_clock.advance(time);
        m_scheduler.fire(time);
    }
    [[nodiscard]] int heatmapTop() const {
        return m_window->findChild<ActivityHeatmapView *>()->mapTo(&*m_window, QPoint()).y();
    }
    std::size_t usageRequests() { return m_server.requestsFor(test::usagePath).size(); }

    std::optional<MainWindowView> m_window;
};

class DashboardSceneTest : public DashboardTest, public testing::WithParamInterface<test::DashboardScene> {};

TEST_P(DashboardSceneTest, AssistiveTechnologyFindsItsTexts) {
    const test::DashboardScene &scene = GetParam();
    MainWindowView &window = open();
    play(scene, window);
    for (const std::string &text : scene.texts)
        EXPECT_TRUE(shows(text)) << text << " in\n" << namesIn(window).join(u'\n').toStdString();
    for (const std::string &text : scene.absent)
        EXPECT_FALSE(shows(text)) << text;
    EXPECT_EQ(test::namesWithoutRole(window).join(u'\n').toStdString(), "");
    EXPECT_FALSE(test::textsIn(window, QAccessible::Description).join(u'\n').contains(QStringLiteral("<p")))
        << "markup of a tool tip";
    EXPECT_EQ(QAccessible::queryAccessibleInterface(&window)->role(), QAccessible::Window);
}

TEST_P(DashboardSceneTest, FitsOnALowScreenAndScrollsVerticallyOnALowerOne) {
    QApplication::setStyle(new QuietStyle);
    play(GetParam(), open());
    m_window.reset();
    int regularHeight = 0;
    for (const std::string_view name : {"common", "low", "very low"}) {
        SCOPED_TRACE(name);
        MainWindowView window(windowServices());
        test::moveTo(test::screenNamed(name), window);
        window.show();
        const QSize first = window.size();
        QTest::keyClick(&window, static_cast<Qt::Key>(Qt::Key_1 + GetParam().tab), Qt::ControlModifier);
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
    QApplication::setStyle(QStringLiteral("Fusion"));
}

INSTANTIATE_TEST_SUITE_P(Scenes, DashboardSceneTest, testing::ValuesIn(test::dashboardScenes()),
                         [](const auto &scene) {
                             std::string name = scene.param.name;
                             std::replace(name.begin(), name.end(), '-', '_');
                             return name;
                         });

TEST_F(DashboardTest, UnchangedValuesAreNotPaintedAgain) {
    addHistory().logIn(67);
    open();
    settle();
    ASSERT_TRUE(waitFor([this] { return shows("Session: 67% used"); }));
    test::PaintCount paints(*m_window); // of all children
    ASSERT_TRUE(stopsPainting(paints));
    m_state.refreshLocalData();
    m_scheduler.fire(300s);
    ASSERT_TRUE(waitFor([this] { return usageRequests() == 2; }));
    EXPECT_EQ(paints.take(), 0);
}

TEST_F(DashboardTest, TheWindowKeepsItsSizeAtTheFirstAnswer) {
    addHistory().logIn(test::held(test::usageAnswer(67))).begin();
    test::PaintCount paints(open());
    ASSERT_TRUE(stopsPainting(paints));
    const QSize awaiting = m_window->size();
    m_server.release();
    ASSERT_TRUE(waitFor([this] { return shows("Session: 67% used"); }));
    ASSERT_TRUE(stopsPainting(paints));
    EXPECT_EQ(m_window->size(), awaiting);
}

TEST_F(DashboardTest, AVisibleWindowUpdatesItsTimesAtEachMinute) {
    logIn(67).settle();
    open();
    EXPECT_TRUE(shows("Updated just now"));
    passUntilMinute(59s); // from 12:00:01
    passUntilMinute(60s);
    EXPECT_TRUE(shows("Updated 1 minute ago"));
    EXPECT_TRUE(shows("Session: 67% used, resets in 2h 3m"));

    // The wall clock was set back: the timer fires a second before the minute.
    m_clock.advance(59s);
    m_scheduler.fire(60s);
    EXPECT_TRUE(shows("Updated 1 minute ago"));
    passUntilMinute(1s);
    EXPECT_TRUE(shows("Updated 2 minutes ago"));

    const auto whileVisible = m_scheduler.intervals().size();
    m_window->hide();
    EXPECT_EQ(m_scheduler.intervals().size(), whileVisible - 1) << "a hidden window has a timer";
    m_clock.advance(60min);
    m_window->show();
    EXPECT_TRUE(shows("Updated 1h ago"));
}

TEST_F(DashboardTest, TheHeatmapFollowsTheTimeZoneAtTheNextMinuteAndWhenShown) {
    addHistory().settle();
    open();
    button("7d").click();
    EXPECT_EQ(usage().timeFilter, TimeFilter::sevenDays);
    QCoreApplication::processEvents();
    EXPECT_TRUE(shows("Active days: 7"));
    EXPECT_TRUE(shows("Activity since Jun 3: 7 active days"));
    m_calendar = Calendar::inZone("Pacific/Kiritimati"); // where the next day has begun
    passUntilMinute(59s);
    EXPECT_TRUE(shows("Activity since Jun 4: "));
    m_window->hide();
    m_calendar = Calendar::inZone("UTC");
    m_window->show();
    EXPECT_TRUE(shows("Activity since Jun 3: "));
}

TEST_F(DashboardTest, AClosedWindowReopensOnTheFirstTab) {
    open();
    settle();
    pressWithControl(Qt::Key_2);
    EXPECT_TRUE(button("Models").isChecked());
    EXPECT_FALSE(shows("Sessions: "));
    pressWithControl(Qt::Key_W);
    EXPECT_FALSE(m_window->isVisible());
    m_window->show();
    EXPECT_TRUE(button("Overview").isChecked());
    EXPECT_TRUE(shows("Sessions: "));
}

TEST_F(DashboardTest, AsksToKeepTheHistoryOnceALogIsTwentyDaysOld) {
    m_home.add("old.jsonl", "", m_clock.now() + 1min - 20 * 24h);
    addHistory(10).logIn(withExtraUsage).askToKeep().settle();
    open();
    QCoreApplication::processEvents();
    EXPECT_FALSE(shows(question));
    const auto geometry = [this] { return std::pair(m_window->size(), heatmapTop()); };
    const auto before = geometry();
    passUntilMinute(59s);
    QCoreApplication::processEvents();
    EXPECT_TRUE(shows(question));
    EXPECT_EQ(geometry(), before) << "the question moves something";

    const auto showAgain = [this] {
        m_window->hide();
        m_window->show();
    };
    for (const char *answer : {"Not now", "Keep"}) {
        SCOPED_TRACE(answer);
        EXPECT_TRUE(shows(question));
        EXPECT_EQ(test::findIn(*m_window, QAccessible::Button, answer)->text(QAccessible::Description),
                  QLatin1String(question));
        button(answer).click();
        EXPECT_EQ(m_preferences.keepHistory(), answer == std::string("Keep"));
        EXPECT_TRUE(m_preferences.keepHistoryAsked());
        EXPECT_FALSE(shows(question));
        showAgain();
        EXPECT_FALSE(shows(question)) << "after the answer";
        m_preferences.setKeepHistoryAsked(false);
        showAgain();
    }
    EXPECT_FALSE(shows(question)) << "the history is kept";
}

TEST_F(DashboardTest, OffersTheDesktopsBarUntilItShowsTheTitleOrTheUserRefuses) {
    using enum BarExtension::State;
    struct FakeBar final : BarExtension {
        [[nodiscard]] State state() const override { return current; }
        void setChangeHandler(std::function<void()> handler) override { change = std::move(handler); }
        void enable() override { ++enabled; }
        void become(State state) {
            current = state;
            change();
        }

        State current = settled;
        std::function<void()> change;
        int enabled = 0;
    } bar;
    m_home.add("old.jsonl", "", m_clock.now() - 21 * 24h);
    addHistory(10).logIn(withExtraUsage).askToKeep().settle();
    auto services = windowServices();
    services.barExtension = &bar;
    m_window.emplace(services).show();
    const char *const offer = "See the tokens, the cost and the quota in GNOME's top bar?";
    EXPECT_TRUE(shows(question));
    bar.become(offered);
    EXPECT_TRUE(shows(offer));
    EXPECT_FALSE(shows(question)) << "two questions at once";
    button("Show").click();
    EXPECT_EQ(bar.enabled, 1);
    bar.become(atNextLogin);
    EXPECT_TRUE(shows("GNOME's top bar shows them when you have logged in again."));
    bar.become(settled);
    EXPECT_TRUE(shows(question)) << "the next one";
    for (const auto &[state, answer] : {std::pair(offered, "Not now"), std::pair(atNextLogin, "OK")}) {
        m_preferences.setBarExtensionAsked(false);
        bar.become(state);
        button(answer).click();
        EXPECT_TRUE(shows(question)) << answer;
    }
    EXPECT_TRUE(m_preferences.barExtensionAsked());
    m_window.reset();
    bar.become(offered); // reaches nobody
}

TEST_F(DashboardTest, RetryRequestsTheQuotaWithoutAutoRefreshToo) {
    logIn(67);
    m_preferences.setAutoRefreshQuota(false);
    open();
    m_state.start();
    EXPECT_EQ(usageRequests(), 0U);
    button("Retry").click();
    ASSERT_TRUE(waitFor([this] { return account().oauthStatus == OAuthStatus::connected; }));
    QCoreApplication::processEvents();
    pressWithControl(Qt::Key_R);
    EXPECT_TRUE(waitFor([this] { return usageRequests() == 2; }));
}

TEST_F(DashboardTest, TheKeyboardReachesEverythingInReadingOrder) {
    addHistory().askToKeep().settle();
    MainWindowView &window = open();
    window.activateWindow();
    ASSERT_TRUE(waitFor([&] { return window.isActiveWindow(); }));
    setBreakdown(test::sampleBreakdown(m_clock.now()));
    QCoreApplication::processEvents();
    const auto *ring = window.findChild<FocusRing *>();
    EXPECT_FALSE(ring->isVisible()) << "before the first key";
    for (const auto &[key, expected] :
         {std::pair(Qt::Key_1, "Settings|Overview|All|Keep|Not now|Model: Claude|Re-authenticate"),
          {Qt::Key_2, "Settings|Models|All|Model: Claude|Re-authenticate"},
          {Qt::Key_3, "Settings|Projects|All|Project|Tokens per day|Cost|Tokens|Sessions|Last used|Projects|"
                      "Model: Claude|Re-authenticate"}}) {
        pressWithControl(key);
        QStringList order;
        while (!order.endsWith(QStringLiteral("Re-authenticate")) && order.size() < 13) {
            QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
            QWidget *focused = QApplication::focusWidget();
            ASSERT_TRUE(focused != nullptr && ring->isVisible());
            EXPECT_EQ(ring->geometry().center(), focused->mapTo(&window, focused->rect().center()));
            order << QAccessible::queryAccessibleInterface(focused)->text(QAccessible::Name);
        }
        EXPECT_EQ(order.join(u'|').toStdString(), expected);
    }
    QStringList providers;
    for (const QAction *action : qobject_cast<QPushButton *>(&button("Claude"))->menu()->actions())
        providers << action->text() + (action->isChecked() ? QStringLiteral(" checked") : QString());
    EXPECT_EQ(providers.join(u'|').toStdString(), "Claude checked||OpenAI|Grok");
    button("All").setFocus();
    QTest::keyClick(&button("All"), Qt::Key_Right);
    EXPECT_EQ(usage().timeFilter, TimeFilter::thirtyDays);
    EXPECT_TRUE(button("30d").isChecked() && !button("All").isChecked());
    EXPECT_TRUE(ring->isVisible());

    const QAbstractButton &clicked = button("Overview");
    QTest::mouseClick(window.windowHandle(), Qt::LeftButton, {},
                      clicked.mapTo(&window, clicked.rect().center()));
    EXPECT_TRUE(clicked.hasFocus());
    EXPECT_FALSE(ring->isVisible()) << "after a click";
}

} // namespace
} // namespace burnwick
