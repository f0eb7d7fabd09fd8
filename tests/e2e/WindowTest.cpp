// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "prefs/SettingsFile.h"
#include "support/AccessibleTree.h"
#include "support/VirtualDisplay.h"

#include <X11/keysym.h>

namespace burnwick {
namespace {

struct AccessibleSession {
    test::AccessibleTree m_tree;
};

/// The real program's window as assistive technology finds it.
class WindowTest : protected AccessibleSession, public test::AccountFixture {
protected:
    WindowTest()
        : AccountFixture(m_tree.sessionBus()) {}

    void SetUp() override {
        ASSERT_TRUE(m_tree.isReady());
        QProcessEnvironment environment = m_program.processEnvironment();
        environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        m_program.setProcessEnvironment(environment);
        showOn(m_display.name());
    }

    [[nodiscard]] bool shows(const char *object) const {
        return waitFor([&] { return m_tree.objects().contains(QString::fromUtf8(object)); });
    }
    /// Once it can be seen.
    bool press(const char *object) {
        return waitFor([&] { return m_tree.press(QString::fromUtf8(object)); });
    }
    /// Possibly with others between them.
    void expectInOrder(std::initializer_list<const char *> expected) const {
        const QStringList objects = m_tree.objects();
        qsizetype last = -1;
        for (const char *object : expected) {
            last = objects.indexOf(QString::fromUtf8(object), last + 1);
            ASSERT_GE(last, 0) << object << " in\n" << objects.join(u'\n').toStdString();
        }
    }

    test::VirtualDisplay m_display;
};

TEST_F(WindowTest, IsReadAndOperatedByAssistiveTechnology) {
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(shows("push button: Re-authenticate"));
    expectInOrder({"label: Burnwick", "label: OAuth token not found",
                   "label: Open Settings to connect your Claude account", "label: CLAUDE STATUS",
                   "radio button: Overview [checked]", "radio button: Models", "radio button: All [checked]",
                   "radio button: 30d", "radio button: 7d", "label: Sessions",
                   "chart: Activity of the last 52 weeks: no tokens", "button menu: Model: Claude",
                   "push button: Re-authenticate", "label: Updated just now"});

    EXPECT_TRUE(m_tree.objects().contains(QStringLiteral("frame: Burnwick")));
    EXPECT_TRUE(press("button menu: Model: Claude"));
    EXPECT_TRUE(shows("menu item: Claude [checked]"));
    expectInOrder({"button menu: Model: Claude", "menu item: Claude [checked]", "menu item: OpenAI",
                   "menu item: Grok", "push button: Re-authenticate"});
    m_display.pressKey("Burnwick", XK_Escape);
    EXPECT_TRUE(waitFor([this] { return !m_tree.objects().contains(QStringLiteral("menu item: OpenAI")); }));

    EXPECT_TRUE(press("radio button: Models"));
    EXPECT_TRUE(shows("label: No model data yet"));
    EXPECT_TRUE(press("radio button: 7d"));
    EXPECT_TRUE(shows("radio button: 7d [checked]"));
    EXPECT_FALSE(m_tree.objects().contains(QStringLiteral("radio button: All [checked]")));
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

TEST_F(WindowTest, TheSettingsAreReadAndOperatedAndLast) {
    // Stands where the folder of what starts at login would be made.
    test::writeFile(m_home.path() / ".config" / "autostart", "");
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(shows("push button: Settings"));
    EXPECT_TRUE(press("push button: Settings"));
    ASSERT_TRUE(shows("push button: Allow")) << "nobody shows notifications here";
    expectInOrder({"label: Settings",
                   "label: Launch at startup",
                   "check box: Launch at startup",
                   "label: Check for updates",
                   "push button: Check Now",
                   "label: Theme",
                   "radio button: Light",
                   "radio button: Dark",
                   "radio button: System [checked]",
                   "check box: Auto-refresh quota data [checked]",
                   "label: Refresh rate",
                   "radio button: 1m",
                   "radio button: 5m [checked]",
                   "radio button: 10m",
                   "label: Notifications",
                   "push button: Allow",
                   "check box: Session reset [checked]",
                   "check box: Alert at 80% quota [checked]",
                   "check box: Rate limit alerts [checked]",
                   "label: Help us improve the product",
                   "push button: Give Feedback",
                   "label: Version"});

    EXPECT_TRUE(press("check box: Session reset"));
    EXPECT_TRUE(press("radio button: 10m"));
    EXPECT_TRUE(press("radio button: Dark"));
    EXPECT_TRUE(press("check box: Launch at startup"));
    EXPECT_TRUE(shows("check box: Session reset"));
    EXPECT_TRUE(shows("radio button: 10m [checked]"));
    EXPECT_TRUE(shows("radio button: Dark [checked]"));
    EXPECT_TRUE(shows("check box: Launch at startup")) << "it was refused";
    QJsonObject stored = QJsonDocument::fromJson(QByteArray::fromStdString(contentOf(m_settings))).object();
    stored.remove(QStringLiteral("apiBaseURL"));
    stored.remove(QStringLiteral("statusBaseURL"));
    EXPECT_EQ(stored, (QJsonObject{{QStringLiteral("sessionResetAlerts"), false},
                                   {QStringLiteral("refreshRate"), 600},
                                   {QStringLiteral("theme"), QStringLiteral("dark")},
                                   {QStringLiteral("launchAtStartup"), false}}));
    EXPECT_TRUE(endsWhenTold(SIGTERM));

    m_watcher.dropName();
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(press("push button: Settings"));
    ASSERT_TRUE(shows("label: Settings"));
    expectInOrder({"check box: Launch at startup", "radio button: Dark [checked]",
                   "radio button: 10m [checked]", "check box: Session reset",
                   "check box: Alert at 80% quota [checked]"});
    constexpr std::uint32_t darkGround = 0x1B1A19;
    EXPECT_EQ(m_display.find("Burnwick", darkGround), QPoint(0, 0));
}

TEST_F(WindowTest, TheItemOpensTheDashboardBesideAnUpdateAlert) {
    const std::string server = m_server.url().toString().toStdString();
    test::writeFile(m_settings,
                    R"({"statusBaseURL":")" + server + R"(","productBaseURL":")" + server + "\"}");
    m_server.script("/appcast.xml", {test::answerOf(200, "<sparkle:shortVersionString>999.0"
                                                         "</sparkle:shortVersionString>")});
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(press("push button: Settings"));
    ASSERT_TRUE(press("push button: Check Now"));
    const QByteArray alert = "Update Available \xe2\x80\x94 Burnwick";
    ASSERT_TRUE(waitFor([&] { return m_display.showsInFront(alert); }));
    m_watcher.callItem(QStringLiteral("Activate"), {0, 0});
    EXPECT_TRUE(waitFor([this] { return m_display.showsInFront("Burnwick"); }));
    EXPECT_TRUE(m_display.shows(alert));
}

TEST_F(WindowTest, LeadsThroughALogin) {
    m_server.script("/api/oauth/usage", {test::usage(67)});
    const std::filesystem::path terminal = m_home.path() / "terminal";
    test::writeFile(terminal, R"(#!/bin/sh
echo "$@" > "$HOME/asked"
while [ ! -e "$HOME/user-is-done" ]; do sleep 0.05; done
)");
    std::filesystem::permissions(terminal, std::filesystem::perms::owner_all);
    QProcessEnvironment environment = m_program.processEnvironment();
    environment.insert(QStringLiteral("TERMINAL"), QString::fromStdString(terminal.string()));
    m_program.setProcessEnvironment(environment);
    ASSERT_TRUE(startProgram());

    ASSERT_TRUE(press("push button: Re-authenticate"));
    EXPECT_TRUE(shows("label: Waiting for browser…"));
    ASSERT_TRUE(waitFor([&] { return std::filesystem::exists(m_home.path() / "asked"); }));
    logIn();
    test::writeFile(m_home.path() / "user-is-done", "");
    EXPECT_TRUE(shows("push button: Reconnect"));
    EXPECT_TRUE(itemShows("0 | $0.00 | s67%  ●"));
    EXPECT_NE(contentOf(m_home.path() / "asked").find("claude"), std::string::npos);
}

} // namespace
} // namespace burnwick
