// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/ProgramFixture.h"
#include "support/WaylandDisplay.h"

#include <QDBusMessage>

namespace burnwick {
namespace {

using namespace std::chrono_literals;

/// The real program under a Wayland compositor, where no X server is.
class WaylandTest : public test::ProgramFixture {
protected:
    WaylandTest() {
        set({{"QT_QPA_PLATFORM", QStringLiteral("wayland")},
             {"WAYLAND_DISPLAY", m_display.name()},
             {"DISPLAY", QString()}});
    }

    bool focuses(const QString &title) {
        return waitFor([&] { return m_display.focused() == title; });
    }
    bool hasWindows(const QStringList &titles) {
        return waitFor([&] { return m_display.windows() == titles; });
    }
    /// Clicks the item. The first click may arrive before the program knows that its window lost the focus.
    bool opensByTheItem() {
        for (int clicks = 0; clicks < 3; ++clicks) {
            m_watcher.callItem(QStringLiteral("Activate"), {0, 0});
            if (waitFor([this] { return m_display.focused() == window; }, 3s))
                return true;
        }
        return false;
    }
    static void openSettings() {
        QDBusMessage action = QDBusMessage::createMethodCall(
            QStringLiteral("com.burnwick.Burnwick"), QStringLiteral("/com/burnwick/Burnwick"),
            QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
        action.setArguments({QStringLiteral("settings"), QVariantList(), QVariantMap()});
        QDBusConnection::sessionBus().call(action);
    }

    const QString window = QStringLiteral("Burnwick"), settings = QStringLiteral("Settings — Burnwick");
    test::WaylandDisplay m_display;
};

TEST_F(WaylandTest, WindowsOpenWithTheFocusOnTheUsersWorkspace) {
    ASSERT_FALSE(m_display.name().isEmpty());
    ASSERT_TRUE(startProgram());
    ASSERT_TRUE(focuses(window));

    EXPECT_TRUE(m_display.run(QStringLiteral("workspace 2")));
    ASSERT_TRUE(focuses({}));
    EXPECT_TRUE(opensByTheItem()) << "on another workspace";

    openSettings();
    EXPECT_TRUE(focuses(settings));
    EXPECT_TRUE(hasWindows({window, settings}));
    EXPECT_TRUE(m_display.run(QStringLiteral("kill")));
    EXPECT_TRUE(focuses(window));

    EXPECT_TRUE(m_display.run(QStringLiteral("kill")));
    EXPECT_TRUE(hasWindows({}));
    EXPECT_TRUE(opensByTheItem()) << "closed";
    EXPECT_TRUE(endsAt(SIGTERM));
}

} // namespace
} // namespace burnwick
