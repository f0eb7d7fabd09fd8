// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/ProgramFixture.h"
#include "support/JsonMembers.h"

#include <QDBusMessage>

#include <X11/keysym.h>

namespace burnwick {
namespace {

const QByteArray settingsTitle = "Settings \xe2\x80\x94 Burnwick";

class SettingsTest : public test::ProgramFixture {
protected:
    /// Sends the call that a desktop sends for the desktop entry's action.
    static bool activateAction() {
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("com.burnwick.Burnwick"), QStringLiteral("/com/burnwick/Burnwick"),
            QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
        call.setArguments({QStringLiteral("settings"), QVariantList(), QVariantMap()});
        return QDBusConnection::sessionBus().call(call).type() == QDBusMessage::ReplyMessage;
    }
    [[nodiscard]] bool storesNoRefresh() const {
        const auto file = m_home.path() / ".config/burnwick/burnwick.json";
        return std::filesystem::exists(file) &&
               test::jsonObject(test::bytesOf(file)).value(QStringLiteral("autoRefreshQuota")) ==
                   QJsonValue(false);
    }
    bool showsSettingsInFront() {
        return waitFor([this] { return m_display.showsInFront(settingsTitle); });
    }

    test::VirtualDisplay m_display;
};

TEST_F(SettingsTest, TheirKeyAndTheDesktopEntrysActionOpenThemAndChoicesAreStored) {
    ASSERT_TRUE(launchOn(m_display));
    ASSERT_TRUE(waitFor([this] { return m_display.givesKeyboardTo("Burnwick"); }));
    m_display.pressKey("Burnwick", XK_comma, XCB_MOD_MASK_CONTROL);
    ASSERT_TRUE(waitFor([this] { return m_display.givesKeyboardTo(settingsTitle); }));
    EXPECT_TRUE(m_display.showsInFront(settingsTitle));
    for (int i = 0; i < 4; ++i) // to the switch "Auto-refresh quota data"
        m_display.pressKey(settingsTitle, XK_Tab);
    m_display.pressKey(settingsTitle, XK_space);
    EXPECT_TRUE(waitFor([this] { return storesNoRefresh(); }));
    m_display.pressKey(settingsTitle, XK_Escape);
    EXPECT_TRUE(waitFor([this] { return !m_display.shows(settingsTitle); }));
    EXPECT_TRUE(m_display.shows("Burnwick"));

    ASSERT_TRUE(activateAction());
    EXPECT_TRUE(showsSettingsInFront());
    EXPECT_TRUE(endsAt(SIGTERM));
}

TEST_F(SettingsTest, AFirstStartWithTheActionOpensThem) {
    launchOn(m_display, {QStringLiteral("--action"), QStringLiteral("settings")});
    EXPECT_TRUE(showsSettingsInFront());
}

} // namespace
} // namespace burnwick
