// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/ProgramFixture.h"
#include "prefs/SettingsFile.h"
#include "support/AccessibleTree.h"
#include "support/VirtualDisplay.h"

namespace burnwick {
namespace {

struct AccessibleSession {
    test::AccessibleTree m_tree;
};

/// The real program's window as assistive technology finds it.
class WindowTest : protected AccessibleSession, public test::ProgramFixture {
protected:
    WindowTest()
        : ProgramFixture(m_tree.sessionBus()) {}

    void SetUp() override {
        ASSERT_TRUE(m_tree.isReady());
        QProcessEnvironment environment = m_program.processEnvironment();
        environment.insert(QStringLiteral("QT_LINUX_ACCESSIBILITY_ALWAYS_ON"), QStringLiteral("1"));
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.insert(QStringLiteral("DISPLAY"), m_display.name());
        m_program.setProcessEnvironment(environment);
    }

    bool comesToShow(const char *object) {
        return waitFor([&] { return m_tree.objects().contains(QString::fromUtf8(object)); });
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
    ASSERT_TRUE(
        waitFor([&] { return m_tree.objects().contains(QStringLiteral("push button: Re-authenticate")); }));
    expectInOrder({"label: Burnwick", "label: OAuth token not found",
                   "label: Open Settings to connect your Claude account", "label: CLAUDE STATUS",
                   "radio button: Overview [checked]", "radio button: Models", "radio button: All [checked]",
                   "radio button: 30d", "radio button: 7d", "label: Sessions",
                   "chart: Activity of the last 52 weeks: no tokens", "button menu: Model: Claude",
                   "push button: Re-authenticate", "label: Updated just now"});

    EXPECT_TRUE(m_tree.press(QStringLiteral("radio button: Models")));
    EXPECT_TRUE(
        waitFor([&] { return m_tree.objects().contains(QStringLiteral("label: No model data yet")); }));
    EXPECT_TRUE(m_tree.press(QStringLiteral("radio button: 7d")));
    EXPECT_TRUE(
        waitFor([&] { return m_tree.objects().contains(QStringLiteral("radio button: 7d [checked]")); }));
    EXPECT_FALSE(m_tree.objects().contains(QStringLiteral("radio button: All [checked]")));
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

TEST_F(WindowTest, TheSettingsAreReadAndOperatedToo) {
    // Stands where the folder of what starts at login would be made.
    test::writeFile(m_home.path() / ".config" / "autostart", "");
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(comesToShow("push button: Settings"));
    EXPECT_TRUE(m_tree.press(QStringLiteral("push button: Settings")));
    ASSERT_TRUE(comesToShow("push button: Allow")) << "nobody shows notifications here";
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

    EXPECT_TRUE(m_tree.press(QStringLiteral("check box: Session reset")));
    EXPECT_TRUE(m_tree.press(QStringLiteral("radio button: 10m")));
    EXPECT_TRUE(m_tree.press(QStringLiteral("check box: Launch at startup")));
    EXPECT_TRUE(comesToShow("check box: Session reset"));
    EXPECT_TRUE(comesToShow("radio button: 10m [checked]"));
    EXPECT_TRUE(comesToShow("check box: Launch at startup")) << "it was refused";
    const auto file = m_home.path() / ".config/burnwick/burnwick.json";
    EXPECT_EQ(QJsonDocument::fromJson(test::bytesOf(QString::fromStdString(file.string()))).object(),
              (QJsonObject{{u"sessionResetAlerts"_qs, false},
                           {u"refreshRate"_qs, 600},
                           {u"launchAtStartup"_qs, false}}));
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

} // namespace
} // namespace burnwick
