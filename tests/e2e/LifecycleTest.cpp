// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/AccountFixture.h"
#include "support/VirtualDisplay.h"

#include <algorithm>

#include <X11/keysym.h>

namespace burnwick {
namespace {

/// How the real program starts, goes on and ends on a screen of its own.
class LifecycleTest : public test::AccountFixture {
protected:
    LifecycleTest() { showOn(m_display.name()); }
    void setVariable(const char *name, const QString &value) {
        QProcessEnvironment environment = m_program.processEnvironment();
        environment.insert(QString::fromLatin1(name), value);
        m_program.setProcessEnvironment(environment);
    }
    bool showsWindow() {
        return waitFor([this] { return m_display.shows("Burnwick"); });
    }
    void start() { m_program.start(QStringLiteral(BURNWICK_PROGRAM), QStringList()); }
    /// What it printed until its end, which it is told now.
    QByteArray saidUntilEnd() {
        EXPECT_TRUE(endsWhenTold(SIGTERM));
        return m_program.readAll();
    }

    test::VirtualDisplay m_display;
};

TEST_F(LifecycleTest, WhatIsMissingIsSaidOnceAndTheWindowIsThere) {
    QString nobody;
    {
        const test::ScriptedServer gone;
        nobody = gone.url().toString();
    }
    logIn();
    test::writeFile(m_settings, R"({"apiBaseURL":")" + nobody.toStdString() + R"(","statusBaseURL":")" +
                                    nobody.toStdString() + R"("})");
    struct Case {
        const char *what;
        QString busAddress;
        std::vector<const char *> said;
    };
    const char *const network = "the quota cannot be reached";
    for (const Case &row :
         {Case{"a bus with nobody on it",
               m_program.processEnvironment().value(QStringLiteral("DBUS_SESSION_BUS_ADDRESS")),
               {network, "no status area", "Authorization request failed"}},
          Case{"no bus either",
               QStringLiteral("unix:path=/nowhere/at/all"),
               {network, "so no status item on it", "so other instances are not seen",
                "Authorization request failed"}}}) {
        setVariable("DBUS_SESSION_BUS_ADDRESS", row.busAddress);
        start();
        ASSERT_TRUE(showsWindow()) << row.what;
        QByteArray said;
        EXPECT_TRUE(waitFor([&] {
            said += m_program.readAll();
            return std::ranges::all_of(row.said, [&](const char *text) { return said.contains(text); });
        }));
        said += saidUntilEnd();
        for (const char *text : row.said)
            EXPECT_EQ(said.count(text), 1) << row.what << ": " << text << " in\n" << said.toStdString();
    }
}

/// It is told to end while tokens are being exchanged.
class LateTokensTest : public LifecycleTest {
protected:
    LateTokensTest() {
        logIn(std::chrono::sys_days(std::chrono::January / 1 / 2020));
        const auto tokens =
            test::answerOf(200, R"({"access_token":"new","refresh_token":"next","expires_in":3600})");
        m_server.script(tokenPath, {test::held(tokens), test::answerOf(400, "{}")});
    }
    bool startsExchange() {
        m_watcher.takeName("panel-6-systray");
        start();
        return showsWindow() && m_watcher.waitForItems(1) &&
               waitFor([this] { return m_server.requestsFor(tokenPath).size() == 1; });
    }
    void send(int signal) const {
        if (runs())
            ::kill(static_cast<pid_t>(m_program.processId()), signal);
    }
    bool hasLeft() {
        return waitFor([this] { return !m_display.shows("Burnwick") && m_watcher.readItem().isEmpty(); });
    }
    [[nodiscard]] bool runs() const { return m_program.state() == QProcess::Running; }
    bool ends() {
        return waitFor([this] { return !runs(); });
    }

    static constexpr auto tokenPath = "/api/oauth/token";
};

TEST_F(LateTokensTest, AreStoredBehindTheUsersBack) {
    ASSERT_TRUE(startsExchange());
    ASSERT_TRUE(waitFor([this] { return m_display.givesKeyboardTo("Burnwick"); }));
    m_display.pressKey("Burnwick", XK_q, XCB_MOD_MASK_CONTROL);
    ASSERT_TRUE(hasLeft());
    send(SIGTERM);
    send(SIGHUP);
    QProcess next;
    next.setProcessEnvironment(m_program.processEnvironment());
    next.start(QStringLiteral(BURNWICK_PROGRAM), QStringList());
    EXPECT_TRUE(showsWindow()) << "a new start is not shown";
    ASSERT_TRUE(runs());
    m_server.release();
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_program.exitCode(), 0);
    EXPECT_NE(contentOf(m_credentials).find(R"("next")"), std::string::npos);
    EXPECT_TRUE(waitFor([this] { return !m_server.requestsFor("/api/oauth/usage").empty(); }))
        << "the new start does not use the stored tokens";
    EXPECT_EQ(m_server.requestsFor(tokenPath).size(), 1U) << "the new start sent the same refresh token";
    next.kill();
    next.waitForFinished();
}

TEST_F(LateTokensTest, AreGivenUpAtASecondSignal) {
    ASSERT_TRUE(startsExchange());
    send(SIGTERM);
    ASSERT_TRUE(hasLeft());
    ASSERT_TRUE(runs());
    send(SIGTERM);
    ASSERT_TRUE(ends());
    EXPECT_EQ(m_program.exitStatus(), QProcess::CrashExit);
}

TEST_F(LifecycleTest, EachWayOutEndsItThoughARequestHangs) {
    logIn();
    test::ScriptedAnswer silence;
    silence.ending = test::ScriptedAnswer::Ending::silence;
    m_server.script("/api/oauth/usage", {silence});
    for (const int signal : {SIGTERM, SIGINT, SIGHUP, 0}) {
        const std::size_t asked = m_server.requestsFor("/api/oauth/usage").size();
        start();
        ASSERT_TRUE(showsWindow());
        ASSERT_TRUE(waitFor([&] { return m_server.requestsFor("/api/oauth/usage").size() > asked; }));
        if (signal != 0) {
            EXPECT_TRUE(endsWhenTold(signal)) << signal;
            continue;
        }
        ASSERT_TRUE(waitFor([this] { return m_display.givesKeyboardTo("Burnwick"); }));
        m_display.pressKey("Burnwick", XK_q, XCB_MOD_MASK_CONTROL);
        EXPECT_TRUE(m_program.waitForFinished(5'000));
        EXPECT_EQ(m_program.exitCode(), 0);
    }
}

} // namespace
} // namespace burnwick
