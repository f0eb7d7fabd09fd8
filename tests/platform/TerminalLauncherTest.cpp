// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/terminal/LinuxTerminalLauncher.h"
#include "support/EnvironmentVariable.h"
#include "support/LogTreeFixture.h"
#include "support/WaitFor.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <memory>
#include <optional>

#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace burnwick {
namespace {

using test::EnvironmentVariable;

/// A home directory whose profile puts the folder "own" on the path, and a system on which only the programs
/// of the folder "bin" are installed.
class TerminalLauncherTest : public testing::Test {
protected:
    TerminalLauncherTest() { install(".profile", "PATH=\"$HOME/own:/usr/bin:/bin\"\n"); }

    void install(const std::string &name, const std::string &script) {
        test::writeProgram(m_home.path() / name, script);
    }
    /// Installs a terminal that records its arguments and environment and then runs the lines.
    void installTerminal(const std::string &name, const std::string &then) {
        install("bin/" + name, "#!/bin/sh\ncd \"$HOME\"\necho $$ >${0##*/}.pid\n/usr/bin/env >${0##*/}.env\n"
                               "printf '%s\\n' \"$@\" >${0##*/}.args\n" +
                                   then + "\n");
    }
    std::string contentOf(const std::string &name) { return test::bytesOf(m_home.path() / name); }
    pid_t terminalsProcess(const std::string &name) { return std::atoi(contentOf(name + ".pid").c_str()); }
    bool ran(const std::string &name) { return std::filesystem::exists(m_home.path() / (name + ".args")); }

    std::optional<bool> launch(TerminalLauncher &launcher, const std::string &command = "true") {
        std::optional<bool> answer;
        launcher.runInLoginShell(command, [&answer](bool launched) { answer = launched; });
        EXPECT_FALSE(answer.has_value()) << "must not answer before it returns";
        EXPECT_TRUE(waitFor([&answer] { return answer.has_value(); }));
        return answer;
    }

    test::TemporaryDirectory m_home;
    EnvironmentVariable m_homeVariable{"HOME", m_home.path().string().c_str()};
    EnvironmentVariable m_path{"PATH", (m_home.path() / "bin").string().c_str()};
    EnvironmentVariable m_shell{"SHELL", "/bin/sh"};
    EnvironmentVariable m_chosen{"TERMINAL", ""};
    EnvironmentVariable m_desktop{"XDG_CURRENT_DESKTOP", ""};

    /// For terminals that end.
    LinuxTerminalLauncher m_patient{std::chrono::minutes(5)};
};

TEST_F(TerminalLauncherTest, AFailureAtOnceLeadsToTheNextTerminal) {
    installTerminal("x-terminal-emulator", "exit 1");
    installTerminal("kitty", "kill -SEGV $$");
    install("bin/alacritty", "#!/does/not/exist\n");
    installTerminal("xterm", "exit 0");
    installTerminal("konsole", "exit 0");
    EXPECT_EQ(launch(m_patient), true);
    EXPECT_TRUE(ran("x-terminal-emulator"));
    EXPECT_TRUE(ran("kitty"));
    EXPECT_TRUE(ran("xterm"));
    EXPECT_FALSE(ran("konsole"));
}

TEST_F(TerminalLauncherTest, AnswersFalseWithoutATerminal) {
    EXPECT_EQ(launch(m_patient), false);
    installTerminal("xterm", "exit 1");
    EXPECT_EQ(launch(m_patient), false);
    EXPECT_TRUE(ran("xterm"));
}

TEST_F(TerminalLauncherTest, TheWindowGetsNoActivation) {
    const EnvironmentVariable token("XDG_ACTIVATION_TOKEN", "1");
    const EnvironmentVariable startup("DESKTOP_STARTUP_ID", "2");
    installTerminal("xterm", "exit 0");
    ASSERT_EQ(launch(m_patient), true);
    const std::string environment = contentOf("xterm.env");
    EXPECT_EQ(environment.find("XDG_ACTIVATION_TOKEN"), std::string::npos);
    EXPECT_EQ(environment.find("DESKTOP_STARTUP_ID"), std::string::npos);
    EXPECT_NE(environment.find("SHELL=/bin/sh"), std::string::npos);
}

TEST_F(TerminalLauncherTest, TheWindowStaysWhenTheLauncherIsDestroyed) {
    installTerminal("xterm", "exec /bin/sleep 120");
    auto launcher = std::make_unique<LinuxTerminalLauncher>(std::chrono::milliseconds(1));
    EXPECT_EQ(launch(*launcher), true);
    ASSERT_TRUE(waitFor([this] { return ran("xterm"); }));
    const pid_t terminal = terminalsProcess("xterm");
    ASSERT_GT(terminal, 0);
    launcher.reset();
    EXPECT_EQ(::waitpid(terminal, nullptr, WNOHANG), 0) << "it does not run any more";
    EXPECT_EQ(::getsid(terminal), terminal) << "the end of our session would be its end";
    ::kill(terminal, SIGKILL);
    // Here, or by Qt.
    EXPECT_TRUE(waitFor([terminal] { return ::waitpid(terminal, nullptr, WNOHANG) != 0; }));
}

TEST_F(TerminalLauncherTest, AnEndedTerminalIsReaped) {
    installTerminal("xterm", "read -r _ <\"$HOME/release\"");
    const std::string release = (m_home.path() / "release").string();
    ASSERT_EQ(::mkfifo(release.c_str(), 0600), 0);
    LinuxTerminalLauncher launcher(std::chrono::milliseconds(1));
    EXPECT_EQ(launch(launcher), true);
    ASSERT_TRUE(waitFor([this] { return ran("xterm"); }));
    const pid_t terminal = terminalsProcess("xterm");
    test::writeFile(release, "\n");
    EXPECT_TRUE(waitFor([terminal] { return ::kill(terminal, 0) != 0; }));
}

TEST_F(TerminalLauncherTest, AnAnswerAfterTheDestructionIsDropped) {
    installTerminal("xterm", "exit 0");
    bool answered = false;
    auto launcher = std::make_unique<LinuxTerminalLauncher>(std::chrono::minutes(5));
    launcher->runInLoginShell("true", [&answered](bool) { answered = true; });
    ASSERT_TRUE(waitFor([this] { return ran("xterm"); }));
    launcher.reset();
    EXPECT_EQ(launch(m_patient), true);
    EXPECT_FALSE(answered);
}

// As real terminals do. Two lines are typed; the screen shows those that the program does not read, too.
constexpr const char *runsItsProgram =
    "PATH=/usr/bin:/bin; shift; printf 'one\\ntwo\\n' | { \"$@\"; cat; } >\"$HOME/screen\" 2>&1";

TEST_F(TerminalLauncherTest, TheCommandReachesALoginShellUnchanged) {
    installTerminal("xterm", runsItsProgram);
    install("own/claude", "#!/bin/sh\nprintf '[%s]' \"$@\"\n");
    ASSERT_EQ(launch(m_patient, "claude 'it''s' \"a  b\" '$HOME;' \\\\; claude '&& '"), true);
    EXPECT_EQ(contentOf("screen"), "[its][a  b][$HOME;][\\][&& ]one\ntwo\n");
}

TEST_F(TerminalLauncherTest, AFailureStaysToBeRead) {
    installTerminal("xterm", runsItsProgram);
    ASSERT_EQ(launch(m_patient, "claude auth login"), true) << "must not be taken for a terminal's failure";
    const std::string screen = contentOf("screen");
    EXPECT_NE(screen.find("not found"), std::string::npos) << screen;
    const std::string notice = "\nThe command failed (exit status 127). Press Enter to close this window. ";
    EXPECT_TRUE(screen.ends_with(notice + "two\n")) << screen;
}

} // namespace
} // namespace burnwick
