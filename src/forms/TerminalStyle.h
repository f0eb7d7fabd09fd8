// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "display/StatusTitle.h"

#include <string>
#include <string_view>

namespace burnwick {

/// The colours of a terminal.
enum class TerminalColors {
    none,  ///< no escape sequences
    basic, ///< bold, dim and the terminal's palette
    full,  ///< the same with any sRGB colour
};

/// The colours of standard output, by the environment's variables NO_COLOR, TERM and COLORTERM (null if
/// unset).
[[nodiscard]] TerminalColors terminalColorsFor(bool isTerminal, const char *noColor, const char *term,
                                               const char *colorTerm) noexcept;

/// Returns the printable text in bold or dim, or unchanged without colours.
[[nodiscard]] std::string bold(std::string_view printable, TerminalColors colors);
[[nodiscard]] std::string dim(std::string_view printable, TerminalColors colors);

/// The status title with its weights, and its dot in the indicator's colour.
[[nodiscard]] std::string styledTitle(const StatusTitle &title, StatusIndicator indicator,
                                      TerminalColors colors);

} // namespace burnwick
