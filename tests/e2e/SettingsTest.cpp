// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/ProgramFixture.h"
#include "prefs/SettingsFile.h"
#include "support/VirtualDisplay.h"

#include <QDBusMessage>

#include <X11/keysym.h>

namespace burnwick {
namespace {

const QByteArray settingsTitle = "Settings \xe2\x80\x94 Burnwick";

/// The settings of the real program, on a screen of their own.
class SettingsTest : public test::ProgramFixture {
protected:
    void startOn(const test::VirtualDisplay &display, const QStringList &arguments = {}) {
        showOn(display.name());
        m_program.start(QStringLiteral(BURNWICK_PROGRAM), arguments);
        ASSERT_TRUE(waitFor([&] { return display.shows("Burnwick"); }));
    }
    /// What the desktop calls for the entry's action.
    static bool activateAction() {
        QDBusMessage call = QDBusMessage::createMethodCall(
            QStringLiteral("com.burnwick.Burnwick"), QStringLiteral("/com/burnwick/Burnwick"),
            QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
        call.setArguments({QStringLiteral("settings"), QVariantList(), QVariantMap()});
        return QDBusConnection::sessionBus().call(call).type() == QDBusMessage::ReplyMessage;
    }
    [[nodiscard]] QJsonValue stored(const char *key) const {
        const auto file = m_home.path() / ".config/burnwick/burnwick.json";
        return QJsonDocument::fromJson(test::bytesOf(QString::fromStdString(file.string())))
            .object()
            .value(QLatin1String(key));
    }
};

TEST_F(SettingsTest, OpenByTheirKeyAndKeepWhatIsChosen) {
    test::VirtualDisplay display;
    startOn(display);
    ASSERT_TRUE(waitFor([&] { return display.givesKeyboardTo("Burnwick"); }));
    display.pressKey("Burnwick", XK_comma, XCB_MOD_MASK_CONTROL);
    ASSERT_TRUE(waitFor([&] { return display.givesKeyboardTo(settingsTitle); }));
    EXPECT_TRUE(display.showsInFront(settingsTitle));
    // The first control is the one of the start at login, the fourth that of the refresh by itself.
    for (int i = 0; i < 4; ++i)
        display.pressKey(settingsTitle, XK_Tab);
    display.pressKey(settingsTitle, XK_space);
    EXPECT_TRUE(waitFor([this] { return stored("autoRefreshQuota") == QJsonValue(false); }));
    display.pressKey(settingsTitle, XK_Escape);
    EXPECT_TRUE(waitFor([&] { return !display.shows(settingsTitle); }));
    EXPECT_TRUE(display.shows("Burnwick"));
}

TEST_F(SettingsTest, OpenByTheDesktopEntrysAction) {
    const test::VirtualDisplay display;
    startOn(display);
    ASSERT_TRUE(activateAction());
    EXPECT_TRUE(waitFor([&] { return display.showsInFront(settingsTitle); }));
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

TEST_F(SettingsTest, OpenWithAFirstStartThatAsksForThem) {
    const test::VirtualDisplay display;
    startOn(display, {QStringLiteral("--action"), QStringLiteral("settings")});
    EXPECT_TRUE(waitFor([&] { return display.showsInFront(settingsTitle); }));
}

} // namespace
} // namespace burnwick
