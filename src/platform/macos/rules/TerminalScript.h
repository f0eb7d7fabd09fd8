// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

namespace burnwick {

/// Returns the AppleScript that opens a Terminal window on the command in a login shell. UTF-8, four lines,
/// the last one without a line feed.
///
/// The window's shell splits words: a path of the login shell with spaces or other special characters does
/// not work. A double quote or a backslash in it is escaped, so that it cannot end the script's string. The
/// command must contain no quote and no backslash.
[[nodiscard]] std::string terminalScript(std::string_view shell, std::string_view command);

} // namespace burnwick
