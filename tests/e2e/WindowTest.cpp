// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/ProgramFixture.h"
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

    test::VirtualDisplay m_display;
};

TEST_F(WindowTest, IsReadAndOperatedByAssistiveTechnology) {
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(
        waitFor([&] { return m_tree.objects().contains(QStringLiteral("push button: Re-authenticate")); }));
    const QStringList objects = m_tree.objects();
    qsizetype last = -1;
    for (const char *expected :
         {"label: Burnwick", "label: OAuth token not found",
          "label: Open Settings to connect your Claude account", "label: CLAUDE STATUS",
          "radio button: Overview [checked]", "radio button: Models", "radio button: All [checked]",
          "radio button: 30d", "radio button: 7d", "label: Sessions",
          "chart: Activity of the last 52 weeks: no tokens", "button menu: Model: Claude",
          "push button: Re-authenticate", "label: Updated just now"}) {
        const qsizetype place = objects.indexOf(QString::fromUtf8(expected));
        EXPECT_GT(place, last) << expected << " in\n" << objects.join(u'\n').toStdString();
        last = place;
    }

    EXPECT_TRUE(m_tree.press(QStringLiteral("radio button: Models")));
    EXPECT_TRUE(
        waitFor([&] { return m_tree.objects().contains(QStringLiteral("label: No model data yet")); }));
    EXPECT_TRUE(m_tree.press(QStringLiteral("radio button: 7d")));
    EXPECT_TRUE(
        waitFor([&] { return m_tree.objects().contains(QStringLiteral("radio button: 7d [checked]")); }));
    EXPECT_FALSE(m_tree.objects().contains(QStringLiteral("radio button: All [checked]")));
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

} // namespace
} // namespace burnwick
