// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/ProgramFixture.h"
#include "support/FakeApplication.h"
#include "support/MuteBus.h"
#include "support/VirtualDisplay.h"

#include <QLocalServer>
#include <QTemporaryDir>

#include <algorithm>
#include <deque>

namespace burnwick {
namespace {

/// Several starts of the real program by one user.
class SingleInstanceTest : public test::ProgramFixture {
protected:
    using Variables = std::vector<std::pair<const char *, QString>>;

    [[nodiscard]] QProcessEnvironment environmentWith(const Variables &variables) const {
        QProcessEnvironment environment = m_program.processEnvironment();
        for (const auto &[name, value] : variables)
            environment.insert(QString::fromLatin1(name), value);
        return environment;
    }
    /// Starts the first program on the display and waits for its window.
    bool showProgramOn(const test::VirtualDisplay &display, const Variables &variables = {}) {
        QProcessEnvironment environment = environmentWith(variables);
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
        environment.insert(QStringLiteral("DISPLAY"), display.name());
        m_program.setProcessEnvironment(environment);
        m_program.start(QStringLiteral(BURNWICK_PROGRAM), QStringList());
        return waitFor([&] { return display.shows("Burnwick"); });
    }
    /// Another start, until its end; its exit code, or -1 when it does not end by itself. Peers in this
    /// process can answer it meanwhile.
    int startAgain(const QStringList &arguments = {}, const Variables &variables = {}) {
        QProcess again;
        again.setProcessEnvironment(environmentWith(variables));
        again.setProcessChannelMode(QProcess::MergedChannels);
        again.start(QStringLiteral(BURNWICK_PROGRAM), arguments);
        const bool ended = waitFor([&] { return again.state() == QProcess::NotRunning; });
        m_said = again.readAll();
        if (!ended) {
            again.kill();
            again.waitForFinished();
        }
        return ended && again.exitStatus() == QProcess::NormalExit ? again.exitCode() : -1;
    }

    QByteArray m_said; ///< what the latest other start printed
};

TEST_F(SingleInstanceTest, ASecondStartOpensTheClosedWindowOfTheFirst) {
    test::VirtualDisplay display;
    ASSERT_TRUE(showProgramOn(display));
    display.close("Burnwick");
    ASSERT_TRUE(waitFor([&] { return !display.shows("Burnwick"); }));
    EXPECT_EQ(startAgain(), 0) << m_said.toStdString();
    EXPECT_TRUE(waitFor([&] { return display.shows("Burnwick"); }));
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

TEST_F(SingleInstanceTest, ASecondStartRaisesTheCoveredWindowOfTheFirst) {
    test::VirtualDisplay display;
    ASSERT_TRUE(showProgramOn(display));
    display.cover();
    ASSERT_TRUE(waitFor([&] { return !display.showsInFront("Burnwick"); }));
    EXPECT_EQ(startAgain(), 0) << m_said.toStdString();
    EXPECT_TRUE(waitFor([&] { return display.showsInFront("Burnwick"); }));
}

TEST_F(SingleInstanceTest, OfEightStartsAtOnceOneGoesOn) {
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

TEST_F(SingleInstanceTest, ASecondStartHandsOverWhatTheDesktopGaveIt) {
    const FakeApplication first;
    m_watcher.takeName("panel-6-systray");
    const Variables variables{{"XDG_ACTIVATION_TOKEN", QStringLiteral("token")},
                              {"DESKTOP_STARTUP_ID", QStringLiteral("id_TIME5")}};
    EXPECT_EQ(startAgain({}, variables), 0);
    EXPECT_EQ(startAgain({QStringLiteral("--action"), QStringLiteral("settings")}, variables), 0);
    EXPECT_EQ(startAgain({QStringLiteral("-reverse")}), 0) << "an option of Qt's";
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
    EXPECT_EQ(display.saidOfStarts(), "");
    EXPECT_EQ(startAgain({}, variables), 0) << m_said.toStdString();
    const QByteArray text(R"(remove: ID="a \"long\" id\\_TIME5")");
    EXPECT_TRUE(waitFor([&] { return display.saidOfStarts().size() > text.size(); }));
    EXPECT_EQ(display.saidOfStarts(), text.leftJustified(40, '\0'));
}

TEST_F(SingleInstanceTest, ASecondStartEndsThoughTheFirstHangs) {
    const FakeApplication hanging(FakeApplication::Conduct::hangs);
    EXPECT_EQ(startAgain(), 1);
    EXPECT_EQ(m_said.count("does not answer"), 1) << m_said.toStdString();
}

TEST_F(SingleInstanceTest, RunsWithoutABus) {
    const test::VirtualDisplay display;
    ASSERT_TRUE(
        showProgramOn(display, {{"DBUS_SESSION_BUS_ADDRESS", QStringLiteral("unix:path=/nowhere/at/all")}}));
    EXPECT_TRUE(endsWhenTold(SIGTERM));
}

TEST_F(SingleInstanceTest, RunsWithABusThatDoesNotRespond) {
    const QTemporaryDir directory;
    const QString silent = directory.filePath(QStringLiteral("silent"));
    const QString mute = directory.filePath(QStringLiteral("mute"));
    QLocalServer silence;
    ASSERT_TRUE(silence.listen(silent));
    const test::MuteBus muteBus(mute);
    // QtDBus waits for the first without limit and for the second for 25 s.
    for (const QString &socket : {silent, mute}) {
        SCOPED_TRACE(socket.toStdString());
        const test::VirtualDisplay display;
        // There, Qt itself asks the bus before the program can.
        ASSERT_TRUE(
            showProgramOn(display, {{"DBUS_SESSION_BUS_ADDRESS", QStringLiteral("unix:path=") + socket},
                                    {"XDG_CURRENT_DESKTOP", QStringLiteral("KDE")},
                                    {"KDE_FULL_SESSION", QStringLiteral("true")},
                                    {"KDE_SESSION_VERSION", QStringLiteral("5")}}));
        EXPECT_TRUE(endsWhenTold(SIGTERM));
        EXPECT_EQ(m_program.readAll().count("does not answer"), 1);
    }
    EXPECT_TRUE(silence.hasPendingConnections()) << "nobody connected";
    EXPECT_EQ(muteBus.clients(), 1);
}

TEST_F(SingleInstanceTest, ReadsTheCommandLine) {
    struct Case {
        QStringList arguments;
        int exitCode;
        const char *says;
        const char *platform = "offscreen";
    };
    // Qt aborts where it finds no display.
    const char *noDisplay = "xcb";
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
        const std::string line = c.arguments.join(QLatin1Char(' ')).toStdString();
        EXPECT_EQ(startAgain(c.arguments,
                             {{"QT_QPA_PLATFORM", QString::fromLatin1(c.platform)}, {"DISPLAY", QString()}}),
                  c.exitCode)
            << line;
        EXPECT_TRUE(m_said.contains(c.says)) << line << ": " << m_said.toStdString();
    }
}

} // namespace
} // namespace burnwick
