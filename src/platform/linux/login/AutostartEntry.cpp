// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/login/AutostartEntry.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace burnwick {

namespace {

constexpr std::string_view mainGroup = "[Desktop Entry]";
constexpr std::string_view hiddenKey = "Hidden";
constexpr std::string_view markLine = "X-Burnwick-Autostart=true\n";

/// Escapes in values of the type "string": a character, and the one after the backslash that replaces it.
constexpr std::pair<char, char> escapes[] = {{'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}, {'\t', 't'}};

std::string escaped(std::string_view text) {
    std::string value;
    for (const char c : text) {
        const auto *const escape = std::ranges::find(escapes, c, &std::pair<char, char>::first);
        value += escape == std::end(escapes) ? std::string(1, c) : std::string{'\\', escape->second};
    }
    return value;
}

std::string unescaped(std::string_view value) {
    std::string text;
    for (std::size_t i = 0; i < value.size(); ++i) {
        const char next = value[i] == '\\' && i + 1 < value.size() ? value[i + 1] : '\0';
        const auto *const escape = std::ranges::find(escapes, next, &std::pair<char, char>::second);
        text += escape == std::end(escapes) ? value[i] : escape->first;
        i += escape == std::end(escapes) ? 0 : 1;
    }
    return text;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

/// A line with its line feed. The key is empty unless the line is "key=value" in the main group.
struct Line {
    [[nodiscard]] bool keepsFromStarting() const {
        return (key == hiddenKey && (value == "true" || value == "1")) ||
               (key == "X-GNOME-Autostart-enabled" && (value == "false" || value == "0"));
    }

    std::string_view text;
    std::string_view key;
    std::string_view value;
};

std::vector<Line> linesOf(std::string_view entry) {
    std::vector<Line> lines;
    bool inMainGroup = false;
    while (!entry.empty()) {
        Line line{entry.substr(0, std::min(entry.find('\n'), entry.size() - 1) + 1), {}, {}};
        entry.remove_prefix(line.text.size());
        const std::string_view content = line.text.substr(0, line.text.find('\n'));
        if (content.starts_with('['))
            inMainGroup = trimmed(content) == mainGroup;
        const auto equals = content.find('=');
        if (inMainGroup && equals != std::string_view::npos && !content.starts_with('#')) {
            line.key = trimmed(content.substr(0, equals));
            line.value = trimmed(content.substr(equals + 1));
        }
        lines.push_back(line);
    }
    return lines;
}

/// Returns the command line that starts the program, quoted by the Desktop Entry Specification 1.5.
std::string commandLine(std::string_view program) {
    constexpr std::string_view reserved = " \t\n\r\"'\\><~|&;$*?#()`%";
    constexpr std::string_view escapedInQuotes = "\"`$\\";
    if (program.find_first_of(reserved) == std::string_view::npos)
        return std::string(program);
    // GLib and systemd do not decode doubled percent signs in the first word, but in later ones: "nice -n 0"
    // starts any path.
    std::string line = program.find('%') == std::string_view::npos ? "" : "nice -n 0 ";
    line += '"';
    for (const char c : program) {
        if (escapedInQuotes.find(c) != std::string_view::npos)
            line += '\\';
        line += c;
        if (c == '%')
            line += c;
    }
    return line + '"';
}

} // namespace

std::string autostartEntry(std::string_view program) {
    // Because of TryExec, desktops ignore the entry when the program is uninstalled.
    return std::string(mainGroup) + "\nExec=" + escaped(commandLine(program)) +
           "\nTryExec=" + escaped(program) +
           "\nType=Application\n"
           "Name=Burnwick\n"
           "Comment=Token usage, cost and quota of Claude Code at a glance\n"
           "Icon=burnwick\n"
           "Terminal=false\n" +
           std::string(markLine);
}

bool isUnchangedEntry(std::string_view entry) {
    const auto lines = linesOf(entry);
    const auto program = std::ranges::find(lines, "TryExec", &Line::key);
    if (program == lines.end())
        return false;
    const std::string unchanged = autostartEntry(unescaped(program->value));
    return entry == unchanged || std::string(entry).append(markLine) == unchanged;
}

bool startsAtLogin(std::string_view entry) {
    const auto lines = linesOf(entry);
    return std::ranges::none_of(lines, &Line::keepsFromStarting) &&
           std::ranges::any_of(lines,
                               [](const Line &line) { return line.key == "Exec" && !line.value.empty(); });
}

std::string switchedEntry(std::string_view entry, bool on) {
    std::string text;
    for (const Line &line : linesOf(entry)) {
        if (on ? !line.keepsFromStarting() : line.key != hiddenKey)
            text += line.text;
        if (!on && trimmed(line.text.substr(0, line.text.find('\n'))) == mainGroup)
            text += "Hidden=true\n";
    }
    return text;
}

} // namespace burnwick
