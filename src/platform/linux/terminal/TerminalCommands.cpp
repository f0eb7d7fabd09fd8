// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/terminal/TerminalCommands.h"

#include <QtCore/QFileInfo>
#include <QtCore/QProcess>

#include <algorithm>
#include <array>

namespace burnwick {

namespace {

struct Terminal {
    const char *name;
    const char *beforeProgram; ///< arguments between the terminal and the program, separated by spaces
    const char *desktop = "";  ///< that it belongs to, as in XDG_CURRENT_DESKTOP
    bool needsWayland = false;
};

constexpr std::array choosers = {
    Terminal{"xdg-terminal-exec", ""},
    Terminal{"x-terminal-emulator", "-e"},
};

/// In the order of preference, after the desktop's terminals.
constexpr std::array terminals = {
    Terminal{"kitty", ""},
    Terminal{"alacritty", "-e"},
    Terminal{"xterm", "-e"},
    Terminal{"wezterm", "start --"},
    Terminal{"gnome-terminal", "--", "GNOME"},
    Terminal{"kgx", "--", "GNOME"},
    Terminal{"ptyxis", "--", "GNOME"},
    Terminal{"konsole", "-e", "KDE"},
    Terminal{"xfce4-terminal", "-x", "XFCE"}, // its -e takes one string
    Terminal{"foot", "", "sway", true},
};

/// Reads the variable TERMINAL: a name or path, possibly with arguments.
struct ChosenTerminal {
    explicit ChosenTerminal(const QString &variable)
        : words(QProcess::splitCommand(variable)) {
        if (words.isEmpty())
            return;
        name = QFileInfo(words.first()).fileName().toUtf8();
        const auto hasName = [this](const Terminal &known) { return name == known.name; };
        if (const auto known = std::find_if(terminals.begin(), terminals.end(), hasName);
            known != terminals.end())
            terminal = *known;
        else if (const auto chooser = std::find_if(choosers.begin(), choosers.end(), hasName);
                 chooser != choosers.end())
            terminal = *chooser;
    }

    QStringList words;
    QByteArray name;
    Terminal terminal{"", "-e"}; ///< most terminals understand -e
};

class CommandList {
public:
    CommandList(const QProcessEnvironment &environment, const FindExecutable &findExecutable)
        : m_hasWayland(!environment.value(QStringLiteral("WAYLAND_DISPLAY")).isEmpty())
        , m_findExecutable(findExecutable) {}

    void add(const Terminal &terminal) { add({QString::fromLatin1(terminal.name)}, terminal); }
    void add(QStringList words, const Terminal &terminal) {
        if (words.isEmpty() || (terminal.needsWayland && !m_hasWayland))
            return;
        words.first() = m_findExecutable(words.first());
        if (words.first().isEmpty())
            return;
        words += QString::fromLatin1(terminal.beforeProgram).split(QLatin1Char(' '), Qt::SkipEmptyParts);
        if (std::find(commands.begin(), commands.end(), words) == commands.end())
            commands.push_back(words);
    }

    std::vector<QStringList> commands;

private:
    bool m_hasWayland;
    const FindExecutable &m_findExecutable;
};

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
    CommandList list(environment, findExecutable);
    const ChosenTerminal chosen(environment.value(QStringLiteral("TERMINAL")));
    list.add(chosen.words, chosen.terminal);
    for (const Terminal &chooser : choosers)
        list.add(chooser);
    // A list such as "ubuntu:GNOME".
    const QStringList desktops =
        environment.value(QStringLiteral("XDG_CURRENT_DESKTOP")).split(QLatin1Char(':'), Qt::SkipEmptyParts);
    for (const QString &desktop : desktops)
        for (const Terminal &terminal : terminals)
            if (desktop.compare(QLatin1String(terminal.desktop), Qt::CaseInsensitive) == 0)
                list.add(terminal);
    for (const Terminal &terminal : terminals)
        list.add(terminal);
    return std::move(list.commands);
}

QStringList loginShellCommand(const QProcessEnvironment &environment, const FindExecutable &findExecutable,
                              const QString &command) {
    // Another shell waits, because the user's may have another syntax. It runs its arguments, so that nothing
    // needs quoting. A crashed program may have left the terminal in raw mode, where Enter ends no line; stty
    // ends that mode. The status is 0 even then: another one leads to the next terminal.
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
