// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "e2e/ProgramFixture.h"

#include <QFile>
#include <QRegularExpression>

#include <sys/resource.h>

namespace burnwick {
namespace {

using test::usageLine;

class ProgramTest : public test::ProgramFixture {};

TEST_F(ProgramTest, RunsWithoutLogsAndCreatesNothingInTheHome) {
    ASSERT_TRUE(startProgram());
    EXPECT_TRUE(itemShows("0 | $0.00 | s--  ●"));
    EXPECT_TRUE(endsAt(SIGINT));
    EXPECT_FALSE(std::filesystem::exists(m_home.path() / ".claude"));
    EXPECT_FALSE(std::filesystem::exists(m_home.path() / ".config" / "burnwick"));
    EXPECT_FALSE(std::filesystem::exists(m_home.path() / ".local"));
}

TEST_F(ProgramTest, StartedByNohupItOutlivesItsTerminal) {
    m_program.setChildProcessModifier([] {
        std::signal(SIGHUP, SIG_IGN);
        std::signal(SIGTERM, SIG_DFL);
    });
    ASSERT_TRUE(startProgram());
    QFile status(QStringLiteral("/proc/%1/status").arg(m_program.processId()));
    ASSERT_TRUE(status.open(QIODevice::ReadOnly));
    static const QRegularExpression mask(QStringLiteral("SigIgn:\\s*([0-9a-f]+)"));
    const qulonglong ignored =
        mask.match(QString::fromLatin1(status.readAll())).captured(1).toULongLong(nullptr, 16);
    EXPECT_TRUE(ignored & (1ULL << (SIGHUP - 1)));
    EXPECT_FALSE(ignored & (1ULL << (SIGTERM - 1)));
    EXPECT_TRUE(endsAt(SIGTERM));
}

TEST_F(ProgramTest, ACrashWouldLeaveNoTokensBehind) {
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_CORE, &limit), 0);
    if (limit.rlim_max == 0)
        GTEST_SKIP() << "core dumps are disabled here";
    const rlimit highest{limit.rlim_max, limit.rlim_max};
    ASSERT_EQ(setrlimit(RLIMIT_CORE, &highest), 0); // inherited by the program
    const bool started = startProgram();
    ASSERT_EQ(setrlimit(RLIMIT_CORE, &limit), 0);
    ASSERT_TRUE(started);
    rlimit programs{};
    ASSERT_EQ(prlimit(static_cast<pid_t>(m_program.processId()), RLIMIT_CORE, nullptr, &programs), 0);
    EXPECT_EQ(programs.rlim_cur, 0u);
    EXPECT_EQ(programs.rlim_max, limit.rlim_max) << "its child processes may raise their own limit";
}

TEST_F(ProgramTest, WithoutADisplayThatRespondsItNamesTheReport) {
    const QString noServer = QStringLiteral(":65000"); // a number that no X server can have
    const std::pair<Variables, std::string> rows[] = {
        {{}, "There is no display."},
        {{{"DISPLAY", noServer}}, "Nothing answers on the display :65000."},
        {{{"DISPLAY", noServer}, {"QT_QPA_PLATFORM", QStringLiteral("xcb")}},
         "Nothing answers on the display :65000."},
        {{{"WAYLAND_DISPLAY", QStringLiteral("wayland-dead")}},
         "Nothing answers on the display wayland-dead."},
        {{{"DISPLAY", noServer}, {"WAYLAND_DISPLAY", QStringLiteral("/nowhere")}},
         "Nothing answers on the display :65000 and /nowhere."},
    };
    QProcessEnvironment environment = m_program.processEnvironment();
    for (const char *name : {"DISPLAY", "WAYLAND_DISPLAY", "QT_QPA_PLATFORM"})
        environment.remove(QLatin1String(name));
    for (const auto &[variables, fault] : rows) {
        m_program.setProcessEnvironment(environment);
        set(variables);
        launch();
        ASSERT_TRUE(m_program.waitForFinished(10'000));
        EXPECT_EQ(m_program.exitStatus(), QProcess::NormalExit);
        EXPECT_EQ(m_program.exitCode(), 1);
        EXPECT_EQ(m_program.readAll().toStdString(),
                  "burnwick: " + fault + " In a terminal burnwick-report prints the figures.\n");
    }
}

TEST_F(ProgramTest, AnOverflowOfTheSumsIsOneLineOfOutput) {
    const std::string half = usageLine("2025-06-10T12:00:00.0Z", INT64_MAX, 0);
    m_home.add("session.jsonl", half + half, std::chrono::system_clock::now());
    launch();
    ASSERT_TRUE(m_program.waitForFinished(10'000));
    EXPECT_EQ(m_program.exitCode(), 70);
    EXPECT_EQ(m_program.readAll().count("more than 64 bits"), 1);
}

} // namespace
} // namespace burnwick
