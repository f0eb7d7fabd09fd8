// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "support/AccessibleTree.h"

namespace burnwick {
namespace {

struct AccessibleSession {
    test::AccessibleTree m_tree;
};

/// The real program's windows by assistive technology.
class WindowTest : protected AccessibleSession, public test::AccountFixture {
protected:
    WindowTest()
        : AccountFixture(m_tree.sessionBus()) {
        set({{"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", QStringLiteral("1")},
             {"QT_QPA_PLATFORM", QStringLiteral("xcb")},
             {"DISPLAY", m_display.name()}});
    }
    void SetUp() override { ASSERT_TRUE(m_tree.isReady()); }

    [[nodiscard]] bool contains(const char *object) const {
        return m_tree.objects().contains(QString::fromUtf8(object));
    }
    [[nodiscard]] bool shows(const char *object) const {
        return waitFor([&] { return contains(object); });
    }
    /// Waits until the object is visible.
    bool press(const char *object) {
        return waitFor([&] { return m_tree.press(QString::fromUtf8(object)); });
    }
    /// Other objects between them are ignored.
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

TEST_F(WindowTest, AssistiveTechnologyReadsAndOperatesTheDashboard) {
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(shows("push button: Re-authenticate"));
    expectInOrder({"label: Burnwick", "label: OAuth token not found",
                   "label: Open Settings to connect your Claude account", "label: CLAUDE STATUS",
                   "radio button: Overview [checked]", "radio button: Models", "radio button: All [checked]",
                   "radio button: 30d", "radio button: 7d", "label: Sessions",
                   "chart: Activity of the last 52 weeks: no tokens", "button menu: Model: Claude",
                   "push button: Re-authenticate", "label: Updated just now"});

    EXPECT_TRUE(contains("frame: Burnwick"));
    EXPECT_TRUE(press("button menu: Model: Claude"));
    EXPECT_TRUE(shows("menu item: Claude [checked]"));
    expectInOrder({"button menu: Model: Claude", "menu item: Claude [checked]", "menu item: OpenAI",
                   "menu item: Grok", "push button: Re-authenticate"});
    ASSERT_TRUE(m_display.pressKeys(QStringLiteral("Escape")));
    EXPECT_TRUE(waitFor([this] { return !contains("menu item: OpenAI"); }));

    EXPECT_TRUE(press("radio button: Models"));
    EXPECT_TRUE(shows("label: No model data yet"));
    EXPECT_TRUE(press("radio button: 7d"));
    EXPECT_TRUE(shows("radio button: 7d [checked]"));
    EXPECT_FALSE(contains("radio button: All [checked]"));
    EXPECT_TRUE(endsAt(SIGTERM));
}

TEST_F(WindowTest, AssistiveTechnologyOperatesTheSettingsAndTheNextStartHasThem) {
    // A file instead of the autostart folder makes registering fail.
    test::writeFile(m_home.path() / ".config" / "autostart", "");
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(press("push button: Settings"));
    ASSERT_TRUE(shows("push button: Allow")) << "there is no notification server here";
    expectInOrder({"label: Settings", "check box: Launch at startup", "push button: Check Now",
                   "radio button: System [checked]", "check box: Auto-refresh quota data [checked]",
                   "radio button: 5m [checked]", "push button: Allow",
                   "check box: Rate limit alerts [checked]", "push button: Give Feedback"});

    for (const char *control : {"check box: Session reset", "radio button: 10m", "radio button: Dark",
                                "check box: Launch at startup"})
        EXPECT_TRUE(press(control));
    for (const char *object : {"check box: Session reset", "radio button: 10m [checked]",
                               "radio button: Dark [checked]", "check box: Launch at startup"})
        EXPECT_TRUE(shows(object)) << object;
    QJsonObject stored =
        QJsonDocument::fromJson(QByteArray::fromStdString(test::bytesOf(m_settings))).object();
    stored.remove(QStringLiteral("apiBaseURL"));
    stored.remove(QStringLiteral("statusBaseURL"));
    EXPECT_EQ(stored, (QJsonObject{{QStringLiteral("sessionResetAlerts"), false},
                                   {QStringLiteral("refreshRate"), 600},
                                   {QStringLiteral("theme"), QStringLiteral("dark")},
                                   {QStringLiteral("launchAtStartup"), false}}));
    EXPECT_TRUE(endsAt(SIGTERM));

    m_watcher.dropName();
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(press("push button: Settings"));
    ASSERT_TRUE(shows("label: Settings"));
    expectInOrder({"check box: Launch at startup", "radio button: Dark [checked]",
                   "radio button: 10m [checked]", "check box: Session reset",
                   "check box: Alert at 80% quota [checked]"});
    constexpr std::uint32_t darkWindowColor = 0x1B1A19;
    EXPECT_EQ(m_display.find("Burnwick", darkWindowColor), QPoint(0, 0));
}

TEST_F(WindowTest, TheItemOpensTheDashboardBesideAnUpdateAlert) {
    writeSettingsWithUpdates();
    m_server.script("/appcast.xml", {test::newerRelease()});
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(press("push button: Settings"));
    ASSERT_TRUE(press("push button: Check Now"));
    const QByteArray alert = "Update Available \xe2\x80\x94 Burnwick";
    ASSERT_TRUE(waitFor([&] { return m_display.showsInFront(alert); }));
    m_watcher.callItem(QStringLiteral("Activate"), {0, 0});
    EXPECT_TRUE(waitFor([this] { return m_display.showsInFront("Burnwick"); }));
    EXPECT_TRUE(m_display.shows(alert));
}

TEST_F(WindowTest, ALoginInATerminalConnectsTheAccount) {
    m_server.script("/api/oauth/usage", {test::usage(67)});
    const std::filesystem::path terminal = m_home.path() / "terminal";
    const std::filesystem::path command = m_home.path() / "command";
    test::writeProgram(terminal, R"(#!/bin/sh
echo "$@" > "$HOME/command"
while [ ! -e "$HOME/user-is-done" ]; do sleep 0.05; done
)");
    set({{"TERMINAL", QString::fromStdString(terminal.string())}});
    ASSERT_TRUE(startProgram());

    ASSERT_TRUE(press("push button: Re-authenticate"));
    EXPECT_TRUE(shows("label: Waiting for browser…"));
    ASSERT_TRUE(waitFor([&] { return std::filesystem::exists(command); }));
    logIn();
    test::writeFile(m_home.path() / "user-is-done", "");
    EXPECT_TRUE(shows("push button: Reconnect"));
    EXPECT_TRUE(itemShows("0 | $0.00 | s67%  ●"));
    EXPECT_NE(test::bytesOf(command).find("claude"), std::string::npos);
}

} // namespace
} // namespace burnwick
