// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Text in the columns of a terminal. All text is UTF-8.
namespace burnwick {

/// displayText(), with U+FFFD for characters of unknown width too.
[[nodiscard]] std::string printableText(std::string_view text);

/// The columns of a printable text: two for a wide character, none for a combining mark.
[[nodiscard]] int columnsOf(std::string_view printable);

/// The printable text in at most that many columns (at least 1). In a longer text an ellipsis replaces the
/// middle, because names differ at their beginnings and ends.
[[nodiscard]] std::string elidedInMiddle(std::string_view printable, int columns);

/// The printable text, padded with blanks to that many columns.
[[nodiscard]] std::string leftAligned(std::string_view printable, int columns);
[[nodiscard]] std::string rightAligned(std::string_view printable, int columns);

} // namespace burnwick
