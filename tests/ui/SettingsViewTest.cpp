// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/SettingsScenes.h"

#include "model/Version.h"
#include "support/JsonMembers.h"
#include "support/Screens.h"

#include <QApplication>
#include <QFileDialog>
#include <QJsonArray>
#include <QLabel>
#include <QMessageBox>
#include <QPointer>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>

#include <algorithm>

namespace burnwick {
namespace {

using Authorization = NotificationCenter::Authorization;
using test::press;

constexpr auto checkBox = QAccessible::CheckBox;
constexpr auto button = QAccessible::Button;
constexpr auto radioButton = QAccessible::RadioButton;
constexpr const char *launch = "Launch at startup";
constexpr const char *keep = "Keep history";
constexpr const char *pace = "Pace alerts";

class SettingsViewTest : public test::SettingsFixture {
protected:
    [[nodiscard]] bool isOn(QAccessible::Role role, const char *name) {
        const QAccessibleInterface *object = test::findIn(*m_view, role, name);
        EXPECT_NE(object, nullptr) << name;
        return object != nullptr && object->state().checked;
    }
    static QMessageBox *openAlert() { return qobject_cast<QMessageBox *>(QApplication::activeModalWidget()); }
    static std::string textOf(const QMessageBox &alert) {
        return (alert.text() + u'\n' + alert.informativeText()).toStdString();
    }
    [[nodiscard]] QJsonValue stored(const char *key) const {
        return test::jsonObject(test::bytesOf(m_home.path() / "settings.json")).value(QLatin1String(key));
    }
};

TEST_F(SettingsViewTest, EachSwitchIsStoredAtOnceAndFollowsThePreference) {
    using P = PreferencesManager;
    const struct {
        const char *name, *key;
        void (P::*set)(bool);
    } rows[] = {
        {launch, "launchAtStartup", &P::setLaunchAtStartup},
        {"Auto-refresh quota data", "autoRefreshQuota", &P::setAutoRefreshQuota},
        {"Session reset", "sessionResetAlerts", &P::setSessionResetAlerts},
        {"Alert at 80% quota", "alertAt80Quota", &P::setAlertAt80Quota},
        {"Rate limit alerts", "rateLimitAlerts", &P::setRateLimitAlerts},
        {pace, "paceAlerts", &P::setPaceAlerts},
        {keep, "keepHistory", &P::setKeepHistory},
    };
    m_preferences.setAlertAt80Quota(false);
    openView();
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        const bool before = isOn(checkBox, row.name);
        EXPECT_EQ(before, row.name != launch && row.name != pace && row.name != keep &&
                              row.key != std::string("alertAt80Quota"));
        press(*m_view, checkBox, row.name);
        EXPECT_EQ(stored(row.key), QJsonValue(!before));
        EXPECT_EQ(isOn(checkBox, row.name), !before);
        (m_preferences.*row.set)(before);
        EXPECT_EQ(isOn(checkBox, row.name), before);
    }
}

TEST_F(SettingsViewTest, EachPickIsStoredAtOnceAndFollowsThePreference) {
    m_preferences.setTheme(Theme::light);
    openView();
    EXPECT_TRUE(isOn(radioButton, "Light") && isOn(radioButton, "1m"));
    for (const char *segment : {"Dark", "10m", "Exact"})
        press(*m_view, radioButton, segment);
    EXPECT_EQ(stored("theme").toString() + stored("figures").toString(), QStringLiteral("darkexact"));
    EXPECT_EQ(stored("refreshRate"), 600);
    EXPECT_TRUE(isOn(radioButton, "Dark") && isOn(radioButton, "10m") && !isOn(radioButton, "1m"));
    m_preferences.setTheme(Theme::system);
    m_preferences.setRefreshRate(RefreshRate::fiveMin);
    m_preferences.setFigures(FigureChoice::asLogged);
    EXPECT_TRUE(isOn(radioButton, "System") && isOn(radioButton, "5m") && isOn(radioButton, "As logged"));
}

TEST_F(SettingsViewTest, LaunchAtStartupShowsTheDesktopsStateAndKeepsTheUsersEntry) {
    m_preferences.setLaunchAtStartup(true);
    openView();
    EXPECT_FALSE(isOn(checkBox, launch));
    EXPECT_FALSE(std::filesystem::exists(m_autostart)) << "opening the view registers the program";
    EXPECT_EQ(stored("launchAtStartup"), true);

    const auto file = m_autostart / "burnwick.desktop";
    const std::string entry = "[Desktop Entry]\nExec=burnwick\nName=Mine\n";
    test::writeFile(file, entry);
    openView();
    EXPECT_TRUE(isOn(checkBox, launch));
    for (const bool on : {false, true}) {
        press(*m_view, checkBox, launch);
        EXPECT_EQ(isOn(checkBox, launch), on);
        EXPECT_EQ(m_loginItem.state() == LoginItemState::on, on);
        EXPECT_EQ(stored("launchAtStartup"), on);
    }
    EXPECT_EQ(test::bytesOf(file), entry);
}

TEST_F(SettingsViewTest, AnItemThatRequiresApprovalShowsAHintUntilItIsAllowed) {
    struct ItemWithApproval final : LoginItem {
        LoginItemState current = LoginItemState::requiresApproval;
        LoginItemState state() const override { return current; }
        std::optional<LoginItemFailure> registerItem() override { return std::nullopt; }
        std::optional<LoginItemFailure> unregisterItem() override { return std::nullopt; }
        std::optional<LoginItemFailure> restoreChoice(bool) override { return std::nullopt; }
    } item;
    const SettingsView::Services services = settingsServices();
    m_view
        .emplace(SettingsView::Services{services.preferences, item, services.notifications, services.desktop,
                                        services.updates, services.history, services.logFolders,
                                        services.feedbackURL, services.reducedMotion})
        .show();
    EXPECT_TRUE(isOn(checkBox, launch));
    constexpr const char *hint = "Launch at startup: allow it in the system's settings";
    EXPECT_TRUE(shows(hint));
    item.current = LoginItemState::on;
    QWidget other;
    other.show();
    other.activateWindow();
    m_view->activateWindow();
    EXPECT_TRUE(waitFor([this] { return !shows(hint); }));
}

TEST_F(SettingsViewTest, LaunchAtStartupFlipsBackWhenTheDesktopRefuses) {
    const auto flipsBack = [this](bool to) {
        openView();
        QList<bool> announced;
        QObject context;
        QObject::connect(&m_preferences, &PreferencesManager::launchAtStartupChanged, &context,
                         [&](bool on) { announced << on; });
        press(*m_view, checkBox, launch);
        EXPECT_EQ(announced, (QList<bool>{to, !to}));
        EXPECT_EQ(stored("launchAtStartup"), !to);
        EXPECT_EQ(isOn(checkBox, launch), !to);
        EXPECT_EQ(m_loginItem.state() == LoginItemState::on, !to);
    };
    // A file in the folder's place stops the superuser too, unlike missing permissions.
    test::writeFile(m_autostart, "");
    flipsBack(true);

    std::filesystem::remove(m_autostart);
    m_preferences.setLaunchAtStartup(true);
    const auto entry = m_home.path() / "mine.desktop"; // behind a link, which is not removed
    test::writeFile(entry, "[Desktop Entry]\nExec=burnwick\n");
    std::filesystem::create_directory(m_autostart);
    std::filesystem::create_symlink(entry, m_autostart / "burnwick.desktop");
    flipsBack(false);
}

TEST_F(SettingsViewTest, TheHistoryIsForgottenBeforeItsSwitchGoesOff) {
    constexpr const char *plural =
        "Forget 1,234 messages of 56 sessions?\n"
        "Their logs are gone, so nothing can bring them back. Messages whose logs exist stay.";
    constexpr const char *failure = "The history could not be forgotten now.\nTry again later.";
    const struct {
        const char *what;
        std::int64_t sessions, messages;
        void (*answer)(QMessageBox &alert);
        const char *question;
        bool canForget;
        int timesForgotten;
    } rows[] = {
        {"nothing is kept", 0, 0, nullptr, "", true, 1},
        {"something is kept that the figures lack", 0, 0, nullptr, "", false, 1},
        {"Forget", 56, 1234, [](QMessageBox &a) { press(a, button, "Forget"); }, plural, true, 1},
        {"Forget, and the ledger fails", 56, 1234, [](QMessageBox &a) { press(a, button, "Forget"); }, plural,
         false, 1},
        {"Cancel", 56, 1234, [](QMessageBox &a) { press(a, button, "Cancel"); }, plural, true, 0},
        {"Return", 1, 2, [](QMessageBox &a) { QTest::keyClick(&a, Qt::Key_Return); },
         "Forget 2 messages of 1 session?\n"
         "Their log is gone, so nothing can bring them back. Messages whose logs exist stay.",
         true, 0},
        {"Escape", 1, 1, [](QMessageBox &a) { QTest::keyClick(&a, Qt::Key_Escape); },
         "Forget 1 message of 1 session?\n"
         "Its log is gone, so nothing can bring it back. Messages whose logs exist stay.",
         true, 0},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        m_preferences.setKeepHistory(true);
        m_usage.keptSessions = row.sessions;
        m_usage.keptMessages = row.messages;
        m_canForget = row.canForget;
        m_timesForgotten = 0;
        openView();
        press(*m_view, checkBox, keep);
        if (row.answer != nullptr) {
            QMessageBox *alert = openAlert();
            ASSERT_NE(alert, nullptr);
            EXPECT_EQ(textOf(*alert), row.question);
            EXPECT_EQ(m_timesForgotten, 0);
            EXPECT_TRUE(isOn(checkBox, keep)) << "before the answer";
            ASSERT_TRUE(QTest::qWaitForWindowActive(alert));
            row.answer(*alert);
        }
        EXPECT_EQ(m_timesForgotten, row.timesForgotten);
        EXPECT_TRUE(m_timesForgotten == 0 || m_forgotLines == (row.messages > 0));
        const bool isOff = row.timesForgotten > 0 && row.canForget;
        EXPECT_EQ(isOn(checkBox, keep), !isOff);
        EXPECT_EQ(m_preferences.keepHistory(), !isOff);
        QMessageBox *alert = openAlert();
        EXPECT_EQ(alert != nullptr ? textOf(*alert) : "", row.canForget ? "" : failure);
        delete alert;
    }
}

TEST_F(SettingsViewTest, LogFoldersAreAddedCheckedAndRemoved) {
    const QString folder = QString::fromStdString((m_home.path() / "more").string());
    std::filesystem::create_directory(m_home.path() / "more");
    openView();
    EXPECT_TRUE(shows("~/.claude/projects") && !shows("Remove"));
    press(*m_view, button, "Add…");
    auto *dialog = m_view->findChild<QFileDialog *>();
    ASSERT_NE(dialog, nullptr);
    for (int times = 0; times < 2; ++times)
        Q_EMIT dialog->fileSelected(folder);
    EXPECT_EQ(stored("logFolders"), QJsonValue(QJsonArray{folder})) << "not once";
    EXPECT_TRUE(waitForText("Remove") && shows(folder.toUtf8().constData()));

    m_folderProblems[folder] = QStringLiteral("No such folder");
    QWidget other;
    other.show();
    other.activateWindow();
    EXPECT_FALSE(shows("No such folder"));
    m_view->activateWindow();
    EXPECT_TRUE(waitForText("No such folder"));
    press(*m_view, button, "Remove");
    EXPECT_EQ(stored("logFolders"), QJsonValue(QJsonArray()));
    EXPECT_TRUE(waitFor([this] { return !shows("Remove"); }));
    EXPECT_FALSE(shows(folder.toUtf8().constData()));
}

TEST_F(SettingsViewTest, ShowsItsVersionAndOpensTheFeedbackPage) {
    openView();
    EXPECT_TRUE(shows(std::string(version()).c_str()));
    press(*m_view, button, "Give Feedback");
    EXPECT_EQ(m_openedPages, QStringList{QStringLiteral("https://burnwick.test/feedback")});
}

TEST_F(SettingsViewTest, AllowRequestsTheAuthorisationAndReadsItAgain) {
    m_center.status = m_center.statusOnRequest = Authorization::notDetermined;
    openView();
    press(*m_view, button, "Allow");
    QCoreApplication::processEvents();
    EXPECT_TRUE(shows("Allow")) << "the user did not decide";
    m_center.statusOnRequest = Authorization::authorized;
    press(*m_view, button, "Allow");
    EXPECT_TRUE(waitForText("Enabled"));
    EXPECT_EQ(m_center.requests, 2);
    EXPECT_EQ(m_desktop.opened, 0);
}

TEST_F(SettingsViewTest, OpenSettingsOpensTheDesktopsAndAnActivatedWindowReadsTheAuthorisation) {
    m_center.status = Authorization::denied;
    openView();
    press(*m_view, button, "Open Settings");
    EXPECT_EQ(m_desktop.opened, 1);
    EXPECT_EQ(m_center.requests, 0);
    QWidget desktopsWindow;
    desktopsWindow.show();
    desktopsWindow.activateWindow();
    ASSERT_TRUE(waitFor([&] { return desktopsWindow.isActiveWindow(); }));
    m_center.status = Authorization::authorized;
    m_view->activateWindow();
    EXPECT_TRUE(waitForText("Enabled"));
}

TEST_F(SettingsViewTest, FollowsTheAuthorisationInOrderAndEndsWithTheView) {
    openView();
    m_center.holdsAnswers = true;
    m_center.change(Authorization::denied);
    m_center.holdsAnswers = false;
    m_center.change(Authorization::notDetermined);
    EXPECT_TRUE(waitForText("Allow"));
    m_center.release();
    EXPECT_TRUE(shows("Allow")) << "the overtaken answer counts";
    m_center.change(Authorization::denied);
    m_center.change(Authorization::authorized);
    EXPECT_TRUE(waitForText("Enabled"));
    m_center.change(Authorization::denied);
    m_view.reset(); // before the answer
    QCoreApplication::processEvents();
    EXPECT_FALSE(m_center.hasChangedHandler());
}

TEST_F(SettingsViewTest, OnALowScreenTheCardsScrollBetweenHeaderAndFooter) {
    SettingsView view(settingsServices());
    test::moveTo(test::screenNamed("very low"), view);
    view.show();
    EXPECT_EQ(view.height(), 500);
    const auto areaOf = [&view](const char *text) {
        const auto labels = view.findChildren<QLabel *>();
        const QLabel *label = *std::ranges::find(labels, QLatin1String(text), &QLabel::text);
        return QRect(label->mapTo(&view, QPoint()), label->size());
    };
    EXPECT_TRUE(view.rect().contains(areaOf("Settings")) && view.rect().contains(areaOf("Version")));
    const auto *area = view.findChild<QScrollArea *>();
    const int hidden = area->verticalScrollBar()->maximum();
    ASSERT_GT(hidden, 80);
    EXPECT_EQ(area->horizontalScrollBar()->maximum(), 0);
    area->verticalScrollBar()->setValue(area->verticalScrollBar()->maximum());
    EXPECT_LT(areaOf("Help us improve the product").bottom(), areaOf("Version").top());

    view.hide();
    test::moveTo(test::screenNamed("common"), view);
    view.show();
    EXPECT_EQ(view.height(), 580);
    EXPECT_EQ(area->verticalScrollBar()->maximum(), hidden - 80);
}

} // namespace
} // namespace burnwick
