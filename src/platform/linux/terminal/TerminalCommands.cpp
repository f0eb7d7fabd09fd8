// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/terminal/TerminalCommands.h"

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace burnwick {

namespace {

struct Terminal {
    const char *name = "";
    const char *beforeProgram = "-e"; ///< arguments between the terminal and the program, separated by spaces
    const char *desktop = "";         ///< the desktop whose terminal it is, as in XDG_CURRENT_DESKTOP
    bool needsWayland = false;
};

/// The system's choosers, then the terminals in the order of preference.
constexpr Terminal terminals[] = {
    {"xdg-terminal-exec", ""},
    {"x-terminal-emulator"},
    {"kitty", ""},
    {"alacritty"},
    {"xterm"},
    {"wezterm", "start --"},
    {"gnome-terminal", "--", "GNOME"},
    {"kgx", "--", "GNOME"},
    {"ptyxis", "--", "GNOME"},
    {"konsole", "-e", "KDE"},
    {"xfce4-terminal", "-x", "XFCE"}, // its -e takes one string
    {"foot", "", "sway", true},
};
constexpr std::size_t choosers = 2;

/// Returns how to start a terminal given by name or path; most understand -e.
Terminal terminalFor(const QString &program) {
    const QByteArray name = QFileInfo(program).fileName().toUtf8();
    const auto *const known =
        std::ranges::find_if(terminals, [&](const Terminal &terminal) { return name == terminal.name; });
    return known != std::end(terminals) ? *known : Terminal{};
}

QString loginShell(const QProcessEnvironment &environment, const FindExecutable &findExecutable) {
    static const QStringList understandLoginAndCommand = {QStringLiteral("sh"),  QStringLiteral("bash"),
                                                          QStringLiteral("zsh"), QStringLiteral("dash"),
                                                          QStringLiteral("ksh"), QStringLiteral("fish")};

    QString shell = environment.value(QStringLiteral("SHELL"));
    if (shell.isEmpty())
        shell = QStringLiteral("/bin/zsh");
    if (understandLoginAndCommand.contains(QFileInfo(shell).fileName()) && !findExecutable(shell).isEmpty())
        return shell;
    return QStringLiteral("/bin/sh");
}

} // namespace

std::vector<QStringList> terminalCommands(const QProcessEnvironment &environment,
                                          const FindExecutable &findExecutable) {
    std::vector<QStringList> commands;
    const bool hasWayland = !environment.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty();
    const auto addWords = [&](QStringList words, const Terminal &terminal) {
        if (words.isEmpty() || (terminal.needsWayland && !hasWayland))
            return;
        words.first() = findExecutable(words.first());
        if (words.first().isEmpty())
            return;
        words += QString::fromLatin1(terminal.beforeProgram).split(u' ', Qt::SkipEmptyParts);
        if (std::ranges::find(commands, words) == commands.end())
            commands.push_back(words);
    };
    const auto add = [&](const Terminal &terminal) {
        addWords({QString::fromLatin1(terminal.name)}, terminal);
    };
    // A name or path, possibly with arguments.
    const QStringList chosen = QProcess::splitCommand(environment.value(QStringLiteral("TERMINAL")));
    addWords(chosen, terminalFor(chosen.value(0)));
    std::for_each_n(std::begin(terminals), choosers, add);
    // A list such as "ubuntu:GNOME".
    const QString desktops = environment.value(QStringLiteral("XDG_CURRENT_DESKTOP"));
    for (const QString &desktop : desktops.split(u':', Qt::SkipEmptyParts))
        for (const Terminal &terminal : terminals)
            if (desktop.compare(QLatin1String(terminal.desktop), Qt::CaseInsensitive) == 0)
                add(terminal);
    std::ranges::for_each(terminals, add);
    return commands;
}

QStringList loginShellCommand(const QProcessEnvironment &environment, const FindExecutable &findExecutable,
                              const QString &command) {
    // /bin/sh waits, because the user's shell may have another syntax. It runs its arguments, which need no
    // quoting then. A crashed program may have left the terminal in raw mode, in which Enter does not end a
    // line; stty ends that mode. The status is always 0: with another one the next terminal would be tried.
    const QString runThenWaitAfterFailure = QStringLiteral(
        "\"$@\" && exit\n"
        "status=$?\n"
        "stty sane 2>/dev/null\n"
        "printf '\\n%s' \"The command failed (exit status $status). Press Enter to close this window. \"\n"
        "read -r _\n"
        "exit 0");
    return {QStringLiteral("/bin/sh"),
            QStringLiteral("-c"),
            runThenWaitAfterFailure,
            QStringLiteral("sh"),
            loginShell(environment, findExecutable),
            QStringLiteral("-l"),
            QStringLiteral("-c"),
            command};
}

} // namespace burnwick
