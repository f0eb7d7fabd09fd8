// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace burnwick {

/// In characters: more than real names have, and few enough to be painted without a delay.
inline constexpr std::size_t longestDisplayText = 400;

/// Whether the character is a control, a separator of lines or a format character, such as those that change
/// the direction of text (Unicode's general categories Cc, Cf, Zl and Zp).
[[nodiscard]] bool isUnseen(char32_t character);

/// The untrusted text, safe for display: one line in which nothing hides or reorders other text or controls a
/// terminal. Unseen characters and malformed UTF-8 bytes become U+FFFD. In texts of more than `longest`
/// characters (at least 2) an ellipsis replaces the middle, because names differ at their beginnings and
/// ends. Returns UTF-8; the caller escapes markup.
[[nodiscard]] std::string displayText(std::string_view text, std::size_t longest = longestDisplayText);

} // namespace burnwick
