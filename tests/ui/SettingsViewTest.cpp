// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "support/Screens.h"
#include "support/VisibleControls.h"
#include "ui/SettingsScenes.h"

#include "model/Version.h"
#include "prefs/SettingsFile.h"
#include "support/Outcome.h"
#include "ui/settings/SettingsWindowController.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

namespace burnwick {
namespace {

using namespace std::chrono_literals;
using Authorization = NotificationCenter::Authorization;
using test::findIn;
using test::namesIn;
using test::press;

struct SwitchRow {
    QString name;
    QString key;
    void (PreferencesManager::*set)(bool);
};

const std::vector<SwitchRow> &switchRows() {
    using P = PreferencesManager;
    static const std::vector<SwitchRow> rows{
        {QStringLiteral("Launch at startup"), QStringLiteral("launchAtStartup"), &P::setLaunchAtStartup},
        {QStringLiteral("Auto-refresh quota data"), QStringLiteral("autoRefreshQuota"),
         &P::setAutoRefreshQuota},
        {QStringLiteral("Session reset"), QStringLiteral("sessionResetAlerts"), &P::setSessionResetAlerts},
        {QStringLiteral("Alert at 80% quota"), QStringLiteral("alertAt80Quota"), &P::setAlertAt80Quota},
        {QStringLiteral("Rate limit alerts"), QStringLiteral("rateLimitAlerts"), &P::setRateLimitAlerts},
    };
    return rows;
}

bool isOn(QWidget &window, QAccessible::Role role, const QString &name) {
    const QAccessibleInterface *object = findIn(window, role, name);
    EXPECT_NE(object, nullptr) << name.toStdString();
    return object != nullptr && object->state().checked;
}

class SettingsViewTest : public test::SettingsFixture {
protected:
    SettingsView &openView() {
        m_view.emplace(settingsServices());
        m_view->show();
        QCoreApplication::processEvents();
        return *m_view;
    }
    [[nodiscard]] QJsonValue stored(const QString &key) const {
        const auto file = m_home.path() / "settings.json";
        return QJsonDocument::fromJson(test::bytesOf(QString::fromStdString(file.string())))
            .object()
            .value(key);
    }
    /// Whether the row of the updates says that.
    bool says(const char *label) { return namesIn(*m_view).contains(QString::fromUtf8(label)); }
    bool comesToSay(const char *label) {
        return waitFor([this, label] { return says(label); });
    }
    void answerVersions(const std::vector<std::string_view> &versions, bool held = false) {
        std::vector<test::ScriptedAnswer> answers;
        for (const std::string_view version : versions) {
            test::ScriptedAnswer answer;
            answer.body = "<sparkle:shortVersionString>" +
                          QByteArray(version.data(), static_cast<qsizetype>(version.size())) +
                          "</sparkle:shortVersionString>";
            answer.held = held;
            answers.push_back(answer);
        }
        m_server.script("/appcast.xml", answers);
    }
    std::size_t checks() { return m_server.requestsFor("/appcast.xml").size(); }
    void checkNow() { press(*m_view, QAccessible::Button, QStringLiteral("Check Now")); }

    std::optional<SettingsView> m_view;
};

TEST_F(SettingsViewTest, EachSwitchIsStoredAtOnceAndFollowsTheStore) {
    SettingsView &view = openView();
    for (const SwitchRow &row : switchRows()) {
        SCOPED_TRACE(row.name.toStdString());
        const bool before = isOn(view, QAccessible::CheckBox, row.name);
        press(view, QAccessible::CheckBox, row.name);
        EXPECT_EQ(stored(row.key), QJsonValue(!before));
        EXPECT_EQ(isOn(view, QAccessible::CheckBox, row.name), !before);
        (m_preferences.*row.set)(before);
        EXPECT_EQ(isOn(view, QAccessible::CheckBox, row.name), before);
    }
}

TEST_F(SettingsViewTest, EachPickIsStoredAtOnceAndFollowsTheStore) {
    SettingsView &view = openView();
    const auto shows = [&view](const char *name) {
        return isOn(view, QAccessible::RadioButton, QString::fromUtf8(name));
    };
    EXPECT_TRUE(shows("System") && shows("1m"));
    press(view, QAccessible::RadioButton, QStringLiteral("Dark"));
    EXPECT_EQ(stored(QStringLiteral("theme")), QStringLiteral("dark"));
    press(view, QAccessible::RadioButton, QStringLiteral("10m"));
    EXPECT_EQ(stored(QStringLiteral("refreshRate")), 600);
    EXPECT_TRUE(shows("Dark") && shows("10m") && !shows("System") && !shows("1m"));
    m_preferences.setTheme(Theme::light);
    m_preferences.setRefreshRate(RefreshRate::fiveMin);
    EXPECT_TRUE(shows("Light") && shows("5m"));
}

TEST_F(SettingsViewTest, ShowsWhatIsStoredAndChangesNothing) {
    const auto isStored = [](const SwitchRow &row) { return row.key == QStringLiteral("launchAtStartup"); };
    for (const SwitchRow &row : switchRows())
        (m_preferences.*row.set)(isStored(row));
    m_preferences.setTheme(Theme::dark);
    m_preferences.setRefreshRate(RefreshRate::tenMin);
    SettingsView &view = openView();
    for (const SwitchRow &row : switchRows())
        EXPECT_FALSE(isOn(view, QAccessible::CheckBox, row.name)) << row.name.toStdString();
    EXPECT_TRUE(isOn(view, QAccessible::RadioButton, QStringLiteral("Dark")));
    EXPECT_TRUE(isOn(view, QAccessible::RadioButton, QStringLiteral("10m")));
    EXPECT_FALSE(std::filesystem::exists(m_autostart)) << "of the start at login the desktop's record counts";
    EXPECT_EQ(stored(QStringLiteral("launchAtStartup")), true);
}

TEST_F(SettingsViewTest, LaunchAtStartupShowsAndSwitchesTheDesktopsRecord) {
    const auto file = m_autostart / "burnwick.desktop";
    const std::string mine = "[Desktop Entry]\nExec=burnwick\nName=Mine\n";
    test::writeFile(file, mine);
    SettingsView &view = openView();
    const QString name = QStringLiteral("Launch at startup");
    EXPECT_TRUE(isOn(view, QAccessible::CheckBox, name));
    press(view, QAccessible::CheckBox, name);
    EXPECT_FALSE(isOn(view, QAccessible::CheckBox, name));
    EXPECT_FALSE(m_loginItem.isRegistered());
    press(view, QAccessible::CheckBox, name);
    EXPECT_TRUE(isOn(view, QAccessible::CheckBox, name));
    EXPECT_EQ(test::bytesOf(file), mine);
    EXPECT_EQ(stored(QStringLiteral("launchAtStartup")), true);
}

TEST_F(SettingsViewTest, LaunchAtStartupRegistersTheProgramAndFlipsBackWhenRefused) {
    SettingsView &view = openView();
    const QString name = QStringLiteral("Launch at startup");
    press(view, QAccessible::CheckBox, name);
    EXPECT_TRUE(m_loginItem.isRegistered());
    press(view, QAccessible::CheckBox, name);
    EXPECT_FALSE(m_loginItem.isRegistered());
    EXPECT_EQ(stored(QStringLiteral("launchAtStartup")), false);
    std::filesystem::remove_all(m_autostart);

    const auto flipsBack = [&](bool to) {
        QList<bool> announced;
        QObject context;
        QObject::connect(&m_preferences, &PreferencesManager::launchAtStartupChanged, &context,
                         [&](bool on) { announced << on; });
        press(view, QAccessible::CheckBox, name);
        EXPECT_EQ(announced, (QList<bool>{to, !to}));
        EXPECT_EQ(stored(QStringLiteral("launchAtStartup")), !to);
        EXPECT_EQ(isOn(view, QAccessible::CheckBox, name), !to);
    };
    // Unlike a folder without permission, this also stops the superuser.
    test::writeFile(m_autostart, "in the folder's place");
    flipsBack(true);
    EXPECT_FALSE(m_loginItem.isRegistered());

    std::filesystem::remove(m_autostart);
    press(view, QAccessible::CheckBox, name);
    std::filesystem::rename(m_autostart / "burnwick.desktop", m_home.path() / "mine.desktop");
    std::filesystem::create_symlink(m_home.path() / "mine.desktop", m_autostart / "burnwick.desktop");
    flipsBack(false);
    EXPECT_TRUE(m_loginItem.isRegistered());
}

class SettingsSceneTest : public SettingsViewTest, public testing::WithParamInterface<test::SettingsScene> {};

TEST_P(SettingsSceneTest, OffersWhatTheAuthorisationCallsFor) {
    m_center.status = GetParam().authorization;
    const QStringList names = namesIn(openView());
    for (const QString &control :
         {QStringLiteral("Enabled"), QStringLiteral("Open Settings"), QStringLiteral("Allow")})
        EXPECT_EQ(names.contains(control), control == GetParam().control) << control.toStdString();
    for (const auto *button : m_view->findChildren<QAbstractButton *>()) {
        if (button->text() == GetParam().control) {
            EXPECT_EQ(button->size(), button->sizeHint()) << "it comes whole";
        }
    }
    EXPECT_EQ(test::namesWithoutRole(*m_view).join(u'\n').toStdString(), "");
}

INSTANTIATE_TEST_SUITE_P(Scenes, SettingsSceneTest, testing::ValuesIn(test::settingsScenes()));

TEST_F(SettingsViewTest, ShowsItsVersionAndTakesFeedbackInTheBrowser) {
    const QString ownVersion = QString::fromUtf8(version().data(), qsizetype(version().size()));
    EXPECT_TRUE(namesIn(openView()).contains(ownVersion));
    press(*m_view, QAccessible::Button, QStringLiteral("Give Feedback"));
    EXPECT_EQ(m_openedPages, QStringList{QStringLiteral("https://burnwick.test/feedback")});
}

TEST_F(SettingsViewTest, AllowAsksAndLooksAgain) {
    m_center.status = Authorization::notDetermined;
    m_center.statusOnRequest = Authorization::notDetermined;
    SettingsView &view = openView();
    press(view, QAccessible::Button, QStringLiteral("Allow"));
    QCoreApplication::processEvents();
    EXPECT_TRUE(says("Allow")) << "nothing came of it";
    m_center.statusOnRequest = Authorization::authorized;
    press(view, QAccessible::Button, QStringLiteral("Allow"));
    EXPECT_TRUE(comesToSay("Enabled"));
    EXPECT_EQ(m_center.requests, 2);
    EXPECT_EQ(m_desktop.opened, 0);
}

TEST_F(SettingsViewTest, OpenSettingsOpensTheDesktopsAndTheWayBackIsNoticed) {
    m_center.status = Authorization::denied;
    SettingsView &view = openView();
    press(view, QAccessible::Button, QStringLiteral("Open Settings"));
    EXPECT_EQ(m_desktop.opened, 1);
    EXPECT_EQ(m_center.requests, 0);
    QWidget desktopsOwn;
    desktopsOwn.show();
    desktopsOwn.activateWindow();
    ASSERT_TRUE(waitFor([&] { return desktopsOwn.isActiveWindow(); }));
    m_center.status = Authorization::authorized;
    view.activateWindow();
    EXPECT_TRUE(comesToSay("Enabled"));
}

TEST_F(SettingsViewTest, TheAuthorisationIsFollowedWhileTheViewLives) {
    openView();
    m_center.change(Authorization::notDetermined);
    EXPECT_TRUE(comesToSay("Allow"));
    m_center.change(Authorization::denied);
    m_center.change(Authorization::authorized);
    EXPECT_TRUE(comesToSay("Enabled"));
    m_center.change(Authorization::denied);
    m_view.reset(); // with the answer on its way
    QCoreApplication::processEvents();
    EXPECT_FALSE(m_center.isFollowed());
}

TEST_F(SettingsViewTest, AnAnswerThatIsOvertakenCountsNoMore) {
    openView();
    m_center.holdsAnswers = true;
    m_center.change(Authorization::denied);
    m_center.holdsAnswers = false;
    m_center.change(Authorization::notDetermined);
    EXPECT_TRUE(comesToSay("Allow"));
    m_center.release();
    EXPECT_TRUE(says("Allow"));
}

TEST_F(SettingsViewTest, ACheckSaysWhatCameOfIt) {
    openView();
    answerVersions({version()});
    checkNow();
    EXPECT_TRUE(says("Checking…"));
    EXPECT_TRUE(comesToSay("Up to date ✓"));
    m_scheduler.advance(4'999ms);
    EXPECT_TRUE(says("Up to date ✓"));
    m_scheduler.advance(1ms);
    EXPECT_TRUE(says("Check for updates"));

    m_server.script("/appcast.xml", {{500}});
    checkNow();
    EXPECT_TRUE(says("Checking…"));
    EXPECT_TRUE(comesToSay("Check for updates"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
}

TEST_F(SettingsViewTest, ANewerVersionIsOfferedOnce) {
    openView();
    answerVersions({"999.0"});
    checkNow();
    checkNow();
    ASSERT_TRUE(waitFor([this] { return checks() == 2 && says("Update available"); }));
    QTest::qWait(0);
    QPointer<QMessageBox> alert = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    ASSERT_NE(alert, nullptr);
    EXPECT_EQ(alert->defaultButton()->text().remove(u'&'), QStringLiteral("Update Now"));
    QTest::keyClick(alert, Qt::Key_Escape);
    EXPECT_TRUE(comesToSay("Check for updates"));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr) << "another one behind it";
    EXPECT_TRUE(m_openedPages.isEmpty());

    checkNow();
    ASSERT_TRUE(comesToSay("Update available"));
    alert = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
    m_view.reset(); // the alert outlives it
    ASSERT_NE(alert, nullptr);
    alert->defaultButton()->click();
    EXPECT_EQ(m_openedPages, QStringList{m_server.url(QStringLiteral("/releases/999.0")).toString()});
}

TEST_F(SettingsViewTest, TwoQuickPressesAreTwoChecksAndTheLastToEndIsShown) {
    openView();
    answerVersions({version()}, true);
    checkNow();
    checkNow();
    ASSERT_TRUE(waitFor([this] { return checks() == 2; }));
    EXPECT_TRUE(says("Checking…"));
    m_server.release();
    EXPECT_TRUE(comesToSay("Up to date ✓"));
    // A check that begins while the last one's success is shown has the label to itself.
    ASSERT_TRUE(waitFor([this] { return m_scheduler.intervals().size() == 1; }));
    m_server.script("/appcast.xml", {{200, {}, {}, test::ScriptedAnswer::Ending::silence}});
    checkNow();
    m_scheduler.advance(5s);
    EXPECT_TRUE(says("Checking…"));
}

TEST_F(SettingsViewTest, AViewMayGoDuringACheck) {
    openView();
    answerVersions({version(), "999.0"}, true);
    checkNow();
    checkNow();
    ASSERT_TRUE(waitFor([this] { return checks() == 2; }));
    m_view.reset();
    m_server.release();
    // The client is done with both once a third one is answered on a connection of its own.
    const auto last =
        test::outcomeOf(m_account.http.send({HttpMethod::get, m_server.url(QStringLiteral("/x"))}));
    ASSERT_TRUE(waitFor([&] { return last->done(); }));
    EXPECT_EQ(QApplication::activeModalWidget(), nullptr);
    EXPECT_TRUE(m_scheduler.intervals().empty());
}

class SettingsWindowTest : public SettingsViewTest {
protected:
    static QList<SettingsView *> windows() {
        QList<SettingsView *> views;
        for (QWidget *widget : QApplication::topLevelWidgets())
            if (auto *view = qobject_cast<SettingsView *>(widget))
                views << view;
        return views;
    }

    SettingsWindowController m_controller{settingsServices()};
};

TEST_F(SettingsWindowTest, IsOneAndFreshAtEachOpening) {
    m_controller.show({});
    ASSERT_EQ(windows().size(), 1);
    const QPointer<SettingsView> first = windows().first();
    EXPECT_EQ(first->windowTitle(), QStringLiteral("Settings"));
    EXPECT_EQ(first->minimumSize(), first->maximumSize());
    EXPECT_FALSE(first->windowFlags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    const QPoint off = first->frameGeometry().center() - first->screen()->availableGeometry().center();
    EXPECT_LE(off.manhattanLength(), 8) << "not centred: " << off.x() << ", " << off.y();
    answerVersions({version()}, true);
    press(*first, QAccessible::Button, QStringLiteral("Check Now"));
    m_controller.show({});
    EXPECT_EQ(windows(), QList<SettingsView *>{first});

    for (const auto &[key, modifier] :
         {std::pair(Qt::Key_Escape, Qt::NoModifier), {Qt::Key_W, Qt::ControlModifier}}) {
        SettingsView *open = windows().first();
        ASSERT_TRUE(waitFor([open] { return open->isActiveWindow(); }));
        QTest::keyClick(open, key, modifier);
        EXPECT_FALSE(open->isVisible());
        m_controller.show({});
        ASSERT_EQ(windows().size(), 1);
        EXPECT_TRUE(namesIn(*windows().first()).contains(QStringLiteral("Check for updates"))) << "not fresh";
    }
    EXPECT_TRUE(first.isNull());
    EXPECT_TRUE(m_center.isFollowed()) << "by the one that is open";
}

TEST_F(SettingsWindowTest, OnALowScreenTheCardsScrollBetweenHeaderAndFooter) {
    SettingsView view(settingsServices());
    test::moveTo(test::screenNamed("very low"), view);
    view.show();
    EXPECT_EQ(view.height(), 500);
    const auto label = [&view](const char *text) {
        for (const auto *candidate : view.findChildren<QLabel *>()) {
            if (candidate->text() == QLatin1String(text))
                return QRect(candidate->mapTo(&view, QPoint()), candidate->size());
        }
        return QRect();
    };
    EXPECT_TRUE(view.rect().contains(label("Settings")));
    EXPECT_TRUE(view.rect().contains(label("Version")));
    const auto *area = view.findChild<QScrollArea *>();
    ASSERT_GT(area->verticalScrollBar()->maximum(), 0);
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    EXPECT_LT(label("Help us improve the product").bottom(), label("Version").top());

    view.hide();
    test::moveTo(test::screenNamed("common"), view);
    view.show();
    EXPECT_EQ(view.height(), 580);
    EXPECT_EQ(area->verticalScrollBar()->maximum(), 0);
}

TEST_F(SettingsWindowTest, TheKeyboardReachesEverythingInReadingOrder) {
    m_controller.show({});
    SettingsView &window = *windows().first();
    ASSERT_TRUE(waitFor([&] { return window.isActiveWindow(); }));
    QStringList order;
    for (int i = 0; i < 9; ++i) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        order << QAccessible::queryAccessibleInterface(QApplication::focusWidget())->text(QAccessible::Name);
    }
    EXPECT_EQ(
        order.join(u'|').toStdString(),
        "Launch at startup|Check Now|System|Auto-refresh quota data|1m|Session reset|Alert at 80% quota|"
        "Rate limit alerts|Give Feedback");
}

} // namespace
} // namespace burnwick
