// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/StatusTitle.h"

#include <string>
#include <string_view>

namespace burnwick {

/// What the terminal can show beside plain text.
enum class TerminalColors {
    none,  ///< no escape sequence at all
    basic, ///< bold, dim and the terminal's own palette
    full,  ///< the same with any sRGB colour
};

/// What standard output can show, by the variables NO_COLOR, TERM and COLORTERM of the environment (null
/// where unset).
[[nodiscard]] TerminalColors terminalColorsFor(bool isTerminal, const char *noColor, const char *term,
                                               const char *colorTerm) noexcept;

/// The printable text as it stands, bold or dim where the terminal can show that.
[[nodiscard]] std::string bold(std::string_view printable, TerminalColors colors);
[[nodiscard]] std::string dim(std::string_view printable, TerminalColors colors);

/// The status title in its weights, its dot in the indicator's colour.
[[nodiscard]] std::string styledTitle(const StatusTitle &title, StatusIndicator indicator,
                                      TerminalColors colors);

} // namespace burnwick
