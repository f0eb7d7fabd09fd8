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
    /// Installs a terminal that records its process's number and then runs the line.
    void installTerminal(const std::string &name, const std::string &line) {
        install("bin/" + name, "#!/bin/sh\necho $$ >\"$HOME/${0##*/}.pid\"\n" + line + "\n");
    }
    std::string contentOf(const std::string &name) { return test::bytesOf(m_home.path() / name); }
    /// Returns the number of the terminal's latest process; 0 when it was not started.
    pid_t processOf(const std::string &terminal) { return std::atoi(contentOf(terminal + ".pid").c_str()); }

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
    EXPECT_GT(processOf("x-terminal-emulator"), 0);
    EXPECT_GT(processOf("kitty"), 0);
    EXPECT_GT(processOf("xterm"), 0);
    EXPECT_EQ(processOf("konsole"), 0);
}

TEST_F(TerminalLauncherTest, AnswersFalseWithoutATerminal) {
    EXPECT_EQ(launch(m_patient), false);
    installTerminal("xterm", "exit 1");
    EXPECT_EQ(launch(m_patient), false);
    EXPECT_GT(processOf("xterm"), 0);
}

TEST_F(TerminalLauncherTest, AWindowOutlivesTheLauncherAndLeavesNoZombie) {
    installTerminal("xterm", "exec /bin/sleep 120");
    auto launcher = std::make_unique<LinuxTerminalLauncher>(std::chrono::milliseconds(1));
    const auto openWindow = [&] {
        std::filesystem::remove(m_home.path() / "xterm.pid");
        EXPECT_EQ(launch(*launcher), true);
        EXPECT_TRUE(waitFor([this] { return processOf("xterm") > 0; }));
        return processOf("xterm");
    };
    const pid_t closed = openWindow();
    const pid_t open = openWindow();
    ASSERT_TRUE(closed > 0 && open > 0);
    ::kill(closed, SIGKILL);
    EXPECT_TRUE(waitFor([closed] { return ::kill(closed, 0) != 0; }));
    launcher.reset();
    EXPECT_EQ(::waitpid(open, nullptr, WNOHANG), 0) << "it has ended";
    EXPECT_EQ(::getsid(open), open) << "it would end with this session";
    ::kill(open, SIGKILL);
    // Reaped by this call or by Qt.
    EXPECT_TRUE(waitFor([open] { return ::waitpid(open, nullptr, WNOHANG) != 0; }));
}

TEST_F(TerminalLauncherTest, AnAnswerAfterTheDestructionIsDropped) {
    installTerminal("xterm", "exit 0");
    bool answered = false;
    auto launcher = std::make_unique<LinuxTerminalLauncher>(std::chrono::minutes(5));
    launcher->runInLoginShell("true", [&answered](bool) { answered = true; });
    ASSERT_TRUE(waitFor([this] { return processOf("xterm") > 0; }));
    launcher.reset();
    EXPECT_EQ(launch(m_patient), true);
    EXPECT_FALSE(answered);
}

TEST_F(TerminalLauncherTest, TheCommandReachesALoginShellAndAFailureStaysVisible) {
    // Runs its program, as real terminals do. Two lines are typed; the screen also shows those that the
    // program does not read.
    installTerminal("xterm", "PATH=/usr/bin:/bin; shift; printf 'one\\ntwo\\n' | { \"$@\"; cat; } "
                             ">\"$HOME/screen\" 2>&1");
    ASSERT_EQ(launch(m_patient, "claude auth login"), true) << "taken for a failure of the terminal";
    const std::string screen = contentOf("screen");
    EXPECT_NE(screen.find("not found"), std::string::npos) << screen;
    const std::string notice = "\nThe command failed (exit status 127). Press Enter to close this window. ";
    EXPECT_TRUE(screen.ends_with(notice + "two\n")) << screen;

    install("own/claude", "#!/bin/sh\nprintf '[%s]' \"$@\"\n");
    ASSERT_EQ(launch(m_patient, "claude 'it''s' \"a  b\" '$HOME;' \\\\; claude '&& '"), true);
    EXPECT_EQ(contentOf("screen"), "[its][a  b][$HOME;][\\][&& ]one\ntwo\n");
}

} // namespace
} // namespace burnwick
