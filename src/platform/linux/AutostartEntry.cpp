// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/AutostartEntry.h"

#include <algorithm>
#include <array>
#include <optional>
#include <utility>
#include <vector>

namespace burnwick {

namespace {

constexpr std::string_view mainGroup = "[Desktop Entry]";
constexpr std::string_view execKey = "Exec";
constexpr std::string_view tryExecKey = "TryExec";
constexpr std::string_view hiddenKey = "Hidden";
constexpr std::string_view gnomeEnabledKey = "X-GNOME-Autostart-enabled";

/// A value of the type "string".
std::string stringValue(std::string_view text) {
    std::string value;
    for (const char c : text) {
        switch (c) {
        case '\\':
            value += "\\\\";
            break;
        case '\n':
            value += "\\n";
            break;
        case '\r':
            value += "\\r";
            break;
        case '\t':
            value += "\\t";
            break;
        default:
            value += c;
        }
    }
    return value;
}

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    return first == std::string_view::npos ? std::string_view()
                                           : text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

std::vector<std::string_view> linesOf(std::string_view text) {
    std::vector<std::string_view> lines;
    while (!text.empty()) {
        const auto end = text.find('\n');
        lines.push_back(text.substr(0, end));
        text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
    }
    return lines;
}

/// A line "key=value"; another line has no key.
struct KeyLine {
    explicit KeyLine(std::string_view line) {
        const auto equals = line.find('=');
        if (equals == std::string_view::npos || line.starts_with('#'))
            return;
        key = trimmed(line.substr(0, equals));
        value = trimmed(line.substr(equals + 1));
    }

    [[nodiscard]] bool keepsFromStarting() const {
        return (key == hiddenKey && (value == "true" || value == "1")) ||
               (key == gnomeEnabledKey && (value == "false" || value == "0"));
    }

    std::string_view key;
    std::string_view value;
};

/// The lines of the main group; absent when there is no such group.
std::optional<std::vector<KeyLine>> mainGroupOf(std::string_view entry) {
    std::optional<std::vector<KeyLine>> group;
    for (const std::string_view line : linesOf(entry)) {
        if (trimmed(line) == mainGroup)
            group.emplace();
        else if (line.starts_with('[') && group)
            break;
        else if (group)
            group->emplace_back(line);
    }
    return group;
}

using Keys = std::array<std::pair<std::string_view, std::string>, 2>;

bool holds(const std::vector<KeyLine> &group, const Keys &keys) {
    return std::ranges::all_of(keys, [&group](const auto &wanted) {
        return std::ranges::any_of(group, [&wanted](const KeyLine &line) {
            return line.key == wanted.first && line.value == wanted.second;
        });
    });
}

void appendLine(std::string &text, std::string_view line) {
    text.append(line).push_back('\n');
}

void appendKeys(std::string &text, const Keys &keys) {
    for (const auto &[key, value] : keys)
        appendLine(text, std::string(key) + '=' + value);
}

/// With these keys in the main group instead of their namesakes, and nothing in it that switches the entry
/// off.
std::string withKeys(std::string_view entry, const Keys &keys) {
    std::string text;
    bool inMainGroup = false;
    for (const std::string_view line : linesOf(entry)) {
        if (line.starts_with('['))
            inMainGroup = trimmed(line) == mainGroup;
        const KeyLine keyLine(line);
        const bool replaced =
            std::ranges::any_of(keys, [&keyLine](const auto &key) { return key.first == keyLine.key; });
        if (inMainGroup && (replaced || keyLine.keepsFromStarting()))
            continue;
        appendLine(text, line);
        if (trimmed(line) == mainGroup)
            appendKeys(text, keys);
    }
    return text;
}

} // namespace

std::string execValue(std::string_view program) {
    constexpr std::string_view reserved = " \t\n\r\"'\\><~|&;$*?#()`";
    constexpr std::string_view escapedInQuotes = "\"`$\\";
    const bool quoted = program.find_first_of(reserved) != std::string_view::npos;
    std::string argument(quoted ? "\"" : "");
    for (const char c : program) {
        if (escapedInQuotes.find(c) != std::string_view::npos)
            argument += '\\';
        argument += c;
        // A single one begins a field code.
        if (c == '%')
            argument += c;
    }
    if (quoted)
        argument += '"';
    // A second round of backslashes: the value is a string first and a command line then.
    return stringValue(argument);
}

bool startsAtLogin(std::string_view entry) {
    const auto group = mainGroupOf(entry);
    return group && std::ranges::none_of(*group, &KeyLine::keepsFromStarting) &&
           std::ranges::any_of(
               *group, [](const KeyLine &line) { return line.key == execKey && !line.value.empty(); });
}

std::string autostartEntry(std::string_view existing, std::string_view program) {
    // Once the program is uninstalled, TryExec has the desktop pass over the entry in silence.
    const Keys keys{{{execKey, execValue(program)}, {tryExecKey, stringValue(program)}}};
    const auto group = mainGroupOf(existing);
    if (!group)
        return withKeys("[Desktop Entry]\n"
                        "Type=Application\n"
                        "Name=Burnwick\n"
                        "Comment=Token usage, cost and quota of Claude Code at a glance\n"
                        "Icon=burnwick\n"
                        "Terminal=false\n",
                        keys);
    return startsAtLogin(existing) && holds(*group, keys) ? std::string(existing) : withKeys(existing, keys);
}

} // namespace burnwick
