// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/SettingsScenes.h"

#include "support/Screens.h"
#include "ui/settings/SettingsWindowController.h"

#include <QApplication>
#include <QPointer>
#include <QTest>

namespace burnwick {
namespace {

class SettingsWindowTest : public test::SettingsFixture {
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

TEST_F(SettingsWindowTest, OneWindowAtATimeIsOpenAndANewOneAfterEachClosing) {
    m_controller.show({});
    ASSERT_EQ(windows().size(), 1);
    const QPointer<SettingsView> first = windows().first();
    EXPECT_EQ(first->windowTitle(), QStringLiteral("Settings"));
    EXPECT_EQ(first->minimumSize(), first->maximumSize());
    EXPECT_FALSE(first->windowFlags() & (Qt::WindowMinimizeButtonHint | Qt::WindowMaximizeButtonHint));
    const QPoint off = first->frameGeometry().center() - first->screen()->availableGeometry().center();
    EXPECT_LE(off.manhattanLength(), 8) << "not centred: " << off.x() << ", " << off.y();
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
    }
    EXPECT_TRUE(first.isNull()) << "the first window was shown again";
    EXPECT_TRUE(m_center.hasChangedHandler()) << "by the new window";
}

TEST_F(SettingsWindowTest, TheTabKeyReachesEachControlInReadingOrder) {
    m_controller.show({});
    SettingsView &window = *windows().first();
    ASSERT_TRUE(waitFor([&] { return window.isActiveWindow(); }));
    m_preferences.setLogFolders({QStringLiteral("/a"), QStringLiteral("/b")});
    QCoreApplication::processEvents();
    QStringList order;
    for (int i = 0; i < 15; ++i) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        order << QAccessible::queryAccessibleInterface(QApplication::focusWidget())->text(QAccessible::Name);
    }
    EXPECT_EQ(
        order.join(u'|').toStdString(),
        "Launch at startup|Check Now|System|Auto-refresh quota data|1m|Session reset|Alert at 80% quota|"
        "Rate limit alerts|Pace alerts|As logged|Keep history|Remove|Remove|Add…|"
        "Give Feedback");
    EXPECT_EQ(test::namesWithoutRole(window).join(u'\n').toStdString(), "");
}

} // namespace
} // namespace burnwick
