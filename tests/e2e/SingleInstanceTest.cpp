// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/ProgramFixture.h"
#include "support/FakeApplication.h"

#include <QLocalServer>
#include <QLocalSocket>
#include <QTemporaryDir>

#include <algorithm>
#include <deque>

namespace burnwick {
namespace {

/// Several starts of the real program by one user.
class SingleInstanceTest : public test::ProgramFixture {
protected:
    /// Starts another process and waits for its end; returns its exit code, or -1 after a timeout or a crash.
    /// Runs the event loop, so that peers in this process can respond.
    int startAgain(const QStringList &arguments = {}, const Variables &variables = {}) {
        QProcess again;
        again.setProcessEnvironment(environmentWith(variables));
        again.setProcessChannelMode(QProcess::MergedChannels);
        again.start(QStringLiteral(BURNWICK_PROGRAM), arguments);
        const bool ended = waitFor([&] { return again.state() == QProcess::NotRunning; });
        m_output = again.readAll();
        if (!ended) {
            again.kill();
            again.waitForFinished();
        }
        return ended && again.exitStatus() == QProcess::NormalExit ? again.exitCode() : -1;
    }

    QByteArray m_output; ///< of the last other process
};

TEST_F(SingleInstanceTest, ASecondStartOpensTheClosedAndRaisesTheCoveredWindowOfTheFirst) {
    test::VirtualDisplay display;
    ASSERT_TRUE(launchOn(display));
    display.close("Burnwick");
    ASSERT_TRUE(waitFor([&] { return !display.shows("Burnwick"); }));
    EXPECT_EQ(startAgain(), 0) << m_output.toStdString();
    EXPECT_TRUE(waitFor([&] { return display.shows("Burnwick"); }));

    display.cover();
    ASSERT_TRUE(waitFor([&] { return !display.showsInFront("Burnwick"); }));
    EXPECT_EQ(startAgain(), 0) << m_output.toStdString();
    EXPECT_TRUE(waitFor([&] { return display.showsInFront("Burnwick"); }));
    EXPECT_TRUE(endsAt(SIGTERM));
}

TEST_F(SingleInstanceTest, OfEightSimultaneousStartsOneRemains) {
    std::deque<QProcess> starts(8);
    for (QProcess &start : starts) {
        start.setProcessEnvironment(m_program.processEnvironment());
        start.start(QStringLiteral(BURNWICK_PROGRAM), QStringList());
    }
    const auto hasEnded = [](const QProcess &start) { return start.state() == QProcess::NotRunning; };
    EXPECT_TRUE(waitFor([&] { return std::ranges::count_if(starts, hasEnded) >= 7; }));
    EXPECT_EQ(std::ranges::count_if(starts, hasEnded), 7);
    for (QProcess &start : starts) {
        if (hasEnded(start)) {
            EXPECT_EQ(start.exitCode(), 0);
        }
        start.kill();
        start.waitForFinished();
    }
}

TEST_F(SingleInstanceTest, ASecondStartForwardsItsActionAndItsTokens) {
    const FakeApplication first;
    m_watcher.takeName("panel-6-systray");
    const Variables variables{{"XDG_ACTIVATION_TOKEN", QStringLiteral("token")},
                              {"DESKTOP_STARTUP_ID", QStringLiteral("id_TIME5")}};
    EXPECT_EQ(startAgain({}, variables), 0);
    EXPECT_EQ(startAgain({QStringLiteral("--action"), QStringLiteral("settings")}, variables), 0);
    EXPECT_EQ(startAgain({QStringLiteral("-reverse")}), 0) << "an option of Qt";
    EXPECT_EQ(first.requests(), (QStringList{QStringLiteral("Activate token=token id=id_TIME5"),
                                             QStringLiteral("settings token=token id=id_TIME5"),
                                             QStringLiteral("Activate token= id=")}));
    EXPECT_TRUE(m_watcher.registeredItems().isEmpty()) << "a second status item";
}

TEST_F(SingleInstanceTest, ASecondStartEndsTheDesktopsBusyPointer) {
    test::VirtualDisplay display;
    const FakeApplication first;
    const Variables variables{{"QT_QPA_PLATFORM", QStringLiteral("xcb")},
                              {"DISPLAY", display.name()},
                              {"DESKTOP_STARTUP_ID", QStringLiteral("a \"long\" id\\_TIME5")}};
    EXPECT_EQ(display.startupMessages(), "");
    EXPECT_EQ(startAgain({}, variables), 0) << m_output.toStdString();
    const QByteArray text(R"(remove: ID="a \"long\" id\\_TIME5")");
    EXPECT_TRUE(waitFor([&] { return display.startupMessages().size() > text.size(); }));
    EXPECT_EQ(display.startupMessages(), text.leftJustified(40, '\0'));
}

TEST_F(SingleInstanceTest, ASecondStartFailsWhenTheFirstDoesNotRespond) {
    const FakeApplication hanging(FakeApplication::Conduct::hangs);
    EXPECT_EQ(startAgain(), 1);
    EXPECT_EQ(m_output.count("does not answer"), 1) << m_output.toStdString();
}

TEST_F(SingleInstanceTest, RunsWithABusThatDoesNotRespond) {
    const QTemporaryDir directory;
    const QString silent = directory.filePath(QStringLiteral("silent"));
    const QString mute = directory.filePath(QStringLiteral("mute"));
    QLocalServer silentServer;
    ASSERT_TRUE(silentServer.listen(silent));
    QLocalServer muteBus; // authenticates its clients and replies to none of their messages
    int muteClients = 0;
    QObject::connect(&muteBus, &QLocalServer::newConnection, &muteBus, [&] {
        QLocalSocket *const client = muteBus.nextPendingConnection();
        QObject::connect(client, &QLocalSocket::readyRead, client, [&muteClients, client] {
            const QByteArray said = client->readAll();
            if (said.contains("AUTH EXTERNAL"))
                client->write("OK 0123456789abcdef0123456789abcdef\r\n");
            if (said.contains("NEGOTIATE_UNIX_FD"))
                client->write("ERROR\r\n");
            muteClients += said.contains("BEGIN") ? 1 : 0;
        });
    });
    ASSERT_TRUE(muteBus.listen(mute));
    // QtDBus would wait for the first without limit, and for the second for 25 s.
    for (const QString &socket : {silent, mute}) {
        SCOPED_TRACE(socket.toStdString());
        const test::VirtualDisplay display;
        // On KDE, Qt calls the bus before the program does.
        set({{"DBUS_SESSION_BUS_ADDRESS", QStringLiteral("unix:path=") + socket},
             {"XDG_CURRENT_DESKTOP", QStringLiteral("KDE")},
             {"KDE_FULL_SESSION", QStringLiteral("true")},
             {"KDE_SESSION_VERSION", QStringLiteral("5")}});
        ASSERT_TRUE(launchOn(display));
        EXPECT_TRUE(endsAt(SIGTERM));
        EXPECT_EQ(m_program.readAll().count("does not answer"), 1);
    }
    EXPECT_TRUE(silentServer.hasPendingConnections()) << "the program did not connect";
    EXPECT_EQ(muteClients, 1);
}

TEST_F(SingleInstanceTest, ReadsTheCommandLine) {
    struct Case {
        QStringList arguments;
        int exitCode;
        const char *output;
        const char *platform = "offscreen";
    };
    const char *noDisplay = "xcb"; // Qt aborts with it here
    const Case cases[] = {
        {{QStringLiteral("--version")}, 0, "burnwick 0.", noDisplay},
        {{QStringLiteral("-v")}, 0, "burnwick 0.", noDisplay},
        {{QStringLiteral("--help")}, 0, "Usage: burnwick [options]", noDisplay},
        {{QStringLiteral("--help"), QStringLiteral("--bogus")}, 0, "--action <name>", noDisplay},
        {{QStringLiteral("--bogus")}, 2, "burnwick: Unknown option 'bogus'. See burnwick --help.\n"},
        {{QStringLiteral("--action")}, 2, "Missing value after '--action'."},
        {{QStringLiteral("--action"), QStringLiteral("quit")}, 2, "Unknown action 'quit'"},
        {{QStringLiteral("--action=")}, 2, "Unknown action ''"},
        {{QStringLiteral("log.jsonl")}, 2, "Unexpected argument 'log.jsonl'."},
    };
    for (const Case &c : cases) {
        SCOPED_TRACE(c.arguments.join(u' ').toStdString());
        const Variables variables{{"QT_QPA_PLATFORM", QString::fromLatin1(c.platform)}, {"DISPLAY", {}}};
        EXPECT_EQ(startAgain(c.arguments, variables), c.exitCode);
        EXPECT_TRUE(m_output.contains(c.output)) << m_output.toStdString();
    }
}

} // namespace
} // namespace burnwick
