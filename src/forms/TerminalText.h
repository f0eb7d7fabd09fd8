// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <string_view>

/// Text in the columns of a terminal. All text is UTF-8.
namespace burnwick {

/// What displayText() makes of it, with U+FFFD also for characters of which no terminal's columns are known.
[[nodiscard]] std::string printableText(std::string_view text);

/// How many columns a printable text takes: two for a wide character, none for a combining mark.
[[nodiscard]] int columnsOf(std::string_view printable);

/// The printable text in at most that many columns (at least 1): what is too much gives way to an ellipsis in
/// the middle, since names differ at their beginnings and ends.
[[nodiscard]] std::string elidedInMiddle(std::string_view printable, int columns);

/// The printable text with blanks behind or in front of it, so that it takes that many columns.
[[nodiscard]] std::string leftAligned(std::string_view printable, int columns);
[[nodiscard]] std::string rightAligned(std::string_view printable, int columns);

} // namespace burnwick
