// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/terminal/TerminalCommands.h"
#include "platform/macos/rules/TerminalScript.h"

#include <gtest/gtest.h>

namespace burnwick {
namespace {

QProcessEnvironment environmentOf(const char *variables) {
    QProcessEnvironment environment;
    for (const QString &variable : QString::fromUtf8(variables).split(QLatin1Char(','), Qt::SkipEmptyParts))
        environment.insert(variable.section(QLatin1Char('='), 0, 0), variable.section(QLatin1Char('='), 1));
    return environment;
}

/// Finds the listed programs in /bin, and the listed paths.
FindExecutable installed(const char *programs) {
    return [list = QString::fromUtf8(programs).split(QLatin1Char(' '))](const QString &program) {
        if (!list.contains(program))
            return QString();
        return program.startsWith(QLatin1Char('/')) ? program : QStringLiteral("/bin/") + program;
    };
}

std::string joined(const std::vector<QStringList> &commands) {
    QStringList lines;
    for (const QStringList &command : commands)
        lines += command.join(QLatin1Char(' ')).replace(QLatin1String("/bin/"), QLatin1String());
    return lines.join(QLatin1String(", ")).toStdString();
}

TEST(TerminalCommands, AreInTheOrderOfPreference) {
    const char *all = "xterm alacritty kitty foot xfce4-terminal konsole kgx gnome-terminal ptyxis wezterm "
                      "x-terminal-emulator xdg-terminal-exec urxvt /opt/kitty";
    const struct {
        const char *environment, *installed, *commands;
    } rows[] = {
        {"", all,
         "xdg-terminal-exec, x-terminal-emulator -e, kitty, alacritty -e, xterm -e, wezterm start --, "
         "gnome-terminal --, kgx --, ptyxis --, konsole -e, xfce4-terminal -x"},
        {"TERMINAL=konsole,XDG_CURRENT_DESKTOP=ubuntu:GNOME,WAYLAND_DISPLAY=wayland-0", all,
         "konsole -e, xdg-terminal-exec, x-terminal-emulator -e, gnome-terminal --, kgx --, ptyxis --, "
         "kitty, "
         "alacritty -e, xterm -e, wezterm start --, xfce4-terminal -x, foot"},
        {"XDG_CURRENT_DESKTOP=XFCE", "xterm konsole xfce4-terminal",
         "xfce4-terminal -x, xterm -e, konsole -e"},
        {"XDG_CURRENT_DESKTOP=sway,WAYLAND_DISPLAY=wayland-1", "xterm foot kitty", "foot, kitty, xterm -e"},
        {"XDG_CURRENT_DESKTOP=sway,WAYLAND_DISPLAY=", "xterm foot", "xterm -e"},
        {"TERMINAL=foot", "foot xterm", "xterm -e"},
        {"TERMINAL=urxvt", "urxvt xterm", "urxvt -e, xterm -e"},
        {"TERMINAL=/opt/kitty --single-instance", "kitty /opt/kitty", "/opt/kitty --single-instance, kitty"},
        {"TERMINAL=gone", "xterm", "xterm -e"},
        {"TERMINAL= ", "xterm", "xterm -e"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(joined(terminalCommands(environmentOf(row.environment), installed(row.installed))),
                  row.commands)
            << row.environment << " | " << row.installed;
}

TEST(LoginShellCommand, RunsTheUsersShell) {
    const struct {
        const char *environment, *installed, *shell;
    } rows[] = {
        {"SHELL=/opt/my shells/fish", "/opt/my", "/bin/sh"}, // not installed
        {"SHELL=/usr/local/bin/fish", "/usr/local/bin/fish", "/usr/local/bin/fish"},
        {"SHELL=/usr/bin/nu", "/usr/bin/nu", "/bin/sh"}, // another syntax of options
        {"", "/bin/zsh", "/bin/zsh"},
        {"", "/bin/bash", "/bin/sh"},
    };
    const QString command = QStringLiteral("a 'b' \"$c\"; d");
    for (const auto &row : rows) {
        const QStringList words =
            loginShellCommand(environmentOf(row.environment), installed(row.installed), command);
        const QStringList expected = {QString::fromUtf8(row.shell), QStringLiteral("-l"),
                                      QStringLiteral("-c"), command};
        EXPECT_EQ(words.first(), QStringLiteral("/bin/sh"));
        EXPECT_EQ(words.mid(words.size() - 4), expected) << row.environment << " | " << row.installed;
    }
}

TEST(TerminalScript, EscapesTheShellsPath) {
    const struct {
        const char *shell, *inScript;
    } rows[] = {
        {"/bin/zsh", "/bin/zsh"},
        {"/opt/\" & evil & \"", R"(/opt/\" & evil & \")"},
        {R"(/opt/\")", R"(/opt/\\\")"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(terminalScript(row.shell, "claude auth login"), "tell application \"Terminal\"\n"
                                                                  "    activate\n"
                                                                  "    do script \"" +
                                                                      std::string(row.inScript) +
                                                                      " -l -c 'claude auth login'; exit\"\n"
                                                                      "end tell");
}

} // namespace
} // namespace burnwick
