// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "support/FakeNotificationServer.h"

#include <QDBusMessage>
#include <QTcpServer>

#include <algorithm>

namespace burnwick {
namespace {

using Ending = test::ScriptedAnswer::Ending;

const QByteArray settings = "Settings \xe2\x80\x94 Burnwick";

/// The real program on a virtual display, from its start to its end.
class LifecycleTest : public test::AccountFixture {
protected:
    /// Waits until the window has the keyboard. `keys` are separated by spaces.
    bool pressKeys(const QByteArray &title, const QString &keys) {
        return waitFor([&] { return m_display.givesKeyboardTo(title); }) && m_display.pressKeys(keys);
    }
    bool pressQuitKeys() { return pressKeys("Burnwick", QStringLiteral("ctrl+q")); }
    bool showsSettingsInFront() {
        return waitFor([this] { return m_display.showsInFront(settings); });
    }
    bool launchWithSettings() {
        return launchOn(m_display) && pressKeys("Burnwick", QStringLiteral("ctrl+comma")) &&
               showsSettingsInFront();
    }

    test::VirtualDisplay m_display;
};

TEST_F(LifecycleTest, MissingServicesAreLoggedOnceAndTheWindowIsShown) {
    logIn();
    writeSettings(test::ScriptedServer().url()); // which is closed before the program starts
    struct Case {
        const char *what;
        QString busAddress;
        std::vector<const char *> logged;
    };
    const char *const network = "the quota cannot be reached";
    const Case cases[] = {{"a bus without services",
                           m_program.processEnvironment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")),
                           {network, "no status area", "Authorization request failed"}},
                          {"no bus",
                           QStringLiteral("unix:path=/nowhere/at/all"),
                           {network, "so no status item on it", "so other instances are not seen",
                            "Authorization request failed"}}};
    for (const Case &row : cases) {
        set({{"DBUS_SESSION_BUS_ADDRESS", row.busAddress}});
        ASSERT_TRUE(launchOn(m_display)) << row.what;
        QByteArray output;
        EXPECT_TRUE(waitFor([&] {
            output += m_program.readAll();
            return std::ranges::all_of(row.logged, [&](const char *text) { return output.contains(text); });
        }));
        EXPECT_TRUE(endsAt(SIGTERM));
        output += m_program.readAll();
        for (const char *text : row.logged)
            EXPECT_EQ(output.count(text), 1) << row.what << ": " << text << " in\n" << output.toStdString();
    }
}

TEST_F(LifecycleTest, SignalsAndTheQuitKeysEndItDuringARequest) {
    logIn();
    m_server.script("/api/oauth/usage", {usageEnding(Ending::silence)});
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, 0}) {
        const std::size_t before = usageRequests();
        ASSERT_TRUE(launchOn(m_display));
        ASSERT_TRUE(waitFor([&] { return usageRequests() > before; }));
        if (signal != 0) {
            EXPECT_TRUE(endsAt(signal)) << signal;
            continue;
        }
        EXPECT_TRUE(pressQuitKeys());
        EXPECT_TRUE(m_program.waitForFinished(5'000));
        EXPECT_EQ(m_program.exitCode(), 0);
    }
}

TEST_F(LifecycleTest, ASlowProxyScriptDelaysNeitherTheWindowNorTheEnd) {
    QTcpServer silentServer; // of the proxy script
    ASSERT_TRUE(silentServer.listen(QHostAddress::LocalHost));
    const QString script = QStringLiteral("pac+http://127.0.0.1:%1/p.pac").arg(silentServer.serverPort());
    set({{"http_proxy", script}, {"https_proxy", script}});
    logIn();
    writeSettings(QUrl(QStringLiteral("https://192.0.2.1"))); // reserved for documentation: unreachable
    ASSERT_TRUE(launchOn(m_display));
    ASSERT_TRUE(waitFor([&] { return silentServer.hasPendingConnections(); })) << "script not requested";
    EXPECT_TRUE(endsAt(SIGTERM));
}

TEST_F(LifecycleTest, AKeyTheDesktopEntrysActionAndItsCommandOpenTheSettings) {
    ASSERT_TRUE(launchWithSettings());
    ASSERT_TRUE(pressKeys(settings, QStringLiteral("Escape")));
    EXPECT_TRUE(waitFor([&] { return !m_display.shows(settings); }));
    EXPECT_TRUE(m_display.shows("Burnwick"));

    QDBusMessage action = QDBusMessage::createMethodCall(
        QStringLiteral("com.burnwick.Burnwick"), QStringLiteral("/com/burnwick/Burnwick"),
        QStringLiteral("org.freedesktop.Application"), QStringLiteral("ActivateAction"));
    action.setArguments({QStringLiteral("settings"), QVariantList(), QVariantMap()});
    ASSERT_EQ(QDBusConnection::sessionBus().call(action).type(), QDBusMessage::ReplyMessage);
    EXPECT_TRUE(showsSettingsInFront());
    EXPECT_TRUE(endsAt(SIGTERM));

    ASSERT_TRUE(launchOn(m_display, {QStringLiteral("--action"), QStringLiteral("settings")}));
    EXPECT_TRUE(showsSettingsInFront());
}

TEST_F(LifecycleTest, AThemeIsStoredAndShownAtOnceAndAtTheNextStart) {
    constexpr std::uint32_t darkWindowColor = 0x1B1A19;
    const auto isDark = [this] {
        return waitFor([this] { return m_display.find("Burnwick", darkWindowColor) == QPoint(0, 0); });
    };
    ASSERT_TRUE(launchWithSettings());
    ASSERT_TRUE(pressKeys(settings, QStringLiteral("Tab Tab Tab Left")));
    EXPECT_TRUE(isDark());
    EXPECT_NE(test::bytesOf(m_settings).find(R"("dark")"), std::string::npos);
    EXPECT_TRUE(endsAt(SIGTERM));
    ASSERT_TRUE(launchOn(m_display));
    EXPECT_TRUE(isDark());
}

TEST_F(LifecycleTest, ANewReleaseIsNotifiedAndTheItemOpensTheDashboardBesideItsAlert) {
    FakeNotificationServer notifications;
    writeSettingsWithUpdates();
    m_server.script("/appcast.xml", {test::newerRelease()});
    m_watcher.takeName("panel-6-systray");
    ASSERT_TRUE(launchWithSettings());
    ASSERT_TRUE(m_watcher.waitForItems(1));
    ASSERT_TRUE(waitFor([&] { return notifications.popups.contains(1); }));
    EXPECT_EQ(notifications.popups[1].body.toStdString(),
              "Burnwick 999.0 is available. Open Settings to update.");
    ASSERT_TRUE(pressKeys(settings, QStringLiteral("Tab Tab space")));
    const QByteArray alert = "Update Available \xe2\x80\x94 Burnwick";
    ASSERT_TRUE(waitFor([&] { return m_display.showsInFront(alert); }));
    m_watcher.callItem(QStringLiteral("Activate"), {0, 0});
    EXPECT_TRUE(waitFor([this] { return m_display.showsInFront("Burnwick"); }));
    EXPECT_TRUE(m_display.shows(alert));
}

TEST_F(LifecycleTest, ALoginInATerminalConnectsTheAccount) {
    m_server.script("/api/oauth/usage", {test::usage(67)});
    const std::filesystem::path terminal = m_home.path() / "terminal";
    const std::filesystem::path command = m_home.path() / "command";
    test::writeProgram(terminal, R"(#!/bin/sh
echo "$@" > "$HOME/command"
while [ ! -e "$HOME/user-is-done" ]; do sleep 0.05; done
)");
    set({{"TERMINAL", QString::fromStdString(terminal.string())}});
    m_watcher.takeName("panel-6-systray");
    ASSERT_TRUE(launchOn(m_display));
    ASSERT_TRUE(m_watcher.waitForItems(1));
    ASSERT_TRUE(pressKeys("Burnwick", QStringLiteral("Tab Tab Tab Tab Tab")));
    // The button's first text is "Retry".
    ASSERT_TRUE(waitFor(
        [&] { return m_display.pressKeys(QStringLiteral("space")) && std::filesystem::exists(command); }));
    logIn();
    test::writeFile(m_home.path() / "user-is-done", "");
    EXPECT_TRUE(itemShows("0 | $0.00 | s67%  ●"));
    EXPECT_TRUE(waitFor([&] { return test::bytesOf(command).find("claude") != std::string::npos; }));
}

/// The program receives a request to end while it exchanges tokens.
class LateTokensTest : public LifecycleTest {
protected:
    LateTokensTest() {
        logIn(std::chrono::sys_days(std::chrono::January / 1 / 2020));
        m_server.script(
            tokenPath,
            {test::held(
                 {200, R"({"access_token":"new-token","refresh_token":"next-token","expires_in":3600})"}),
             {400, "{}"}});
    }
    bool startsExchange() {
        m_watcher.takeName("panel-6-systray");
        return launchOn(m_display) && m_watcher.waitForItems(1) &&
               waitFor([this] { return m_server.requestsFor(tokenPath).size() == 1; });
    }
    void send(int signal) const {
        if (runs())
            ::kill(static_cast<pid_t>(m_program.processId()), signal);
    }
    /// Whether window and status item disappear.
    bool disappears() {
        return waitFor([this] { return !m_display.shows("Burnwick") && m_watcher.readItem().isEmpty(); });
    }
    [[nodiscard]] bool runs() const { return m_program.state() == QProcess::Running; }
    bool ends() {
        return waitFor([this] { return !runs(); });
    }

    static constexpr auto tokenPath = "/api/oauth/token";
};

TEST_F(LateTokensTest, AreStoredAfterTheWindowHasClosed) {
    ASSERT_TRUE(startsExchange());
    ASSERT_TRUE(pressQuitKeys());
    ASSERT_TRUE(disappears());
    send(SIGTERM);
    send(SIGHUP);
    QProcess next;
    next.setProcessEnvironment(m_program.processEnvironment());
    next.start(QStringLiteral(BURNWICK_PROGRAM), QStringList());
    EXPECT_TRUE(waitFor([this] { return m_display.shows("Burnwick"); })) << "a new start has no window";
    ASSERT_TRUE(runs());
    m_server.release();
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_program.exitCode(), 0);
    EXPECT_FALSE(m_program.readAll().contains("-token"));
    EXPECT_NE(test::bytesOf(m_credentials).find(R"("next-token")"), std::string::npos);
    ASSERT_TRUE(waitFor([this] { return usageRequests() > 0; })) << "the new start ignores the stored tokens";
    EXPECT_EQ(m_server.requestsFor("/api/oauth/usage").front().header("Authorization"), "Bearer new-token");
    EXPECT_EQ(m_server.requestsFor(tokenPath).size(), 1U) << "the new start sent the same refresh token";
    next.kill();
    next.waitForFinished();
}

TEST_F(LateTokensTest, ASecondSignalEndsTheProgramAtOnce) {
    ASSERT_TRUE(startsExchange());
    send(SIGTERM);
    ASSERT_TRUE(disappears());
    ASSERT_TRUE(runs());
    send(SIGTERM);
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_program.exitStatus(), QProcess::CrashExit);
}

} // namespace
} // namespace burnwick
