// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace burnwick {

/// Logs Claude Code in; to be run in a login shell, whose profile knows where it is installed.
inline constexpr const char *loginCommand = "claude auth login";

/// The AppleScript that opens a Terminal window on the login command in a login shell. UTF-8, four lines, the
/// last one without a line feed.
///
/// The shell's path goes in as it is and the window's shell reads it as a word: a path with spaces or other
/// characters special to a shell does not work. Only a double quote or a backslash gets a backslash before
/// it, as AppleScript writes them inside a string: such a path cannot end the string and add to the script.
[[nodiscard]] std::string terminalLoginScript(std::string_view shell);

} // namespace burnwick
