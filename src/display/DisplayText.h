// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace burnwick {

/// Far more than a real name has, and little enough to be measured and painted at once.
inline constexpr std::size_t longestDisplayText = 400;

/// Whether the character is a control, ends a line, or is a mark of format, among them those that turn the
/// direction of writing (Unicode's general categories Cc, Cf, Zl and Zp).
[[nodiscard]] bool isUnseen(char32_t character);

/// A text from outside as it may stand among our own: on one line, with nothing in it that hides or reorders
/// what is around it or commands a terminal. Unseen characters and bytes that are no UTF-8 become U+FFFD. Of
/// more than `longest` characters (at least 2) the middle gives way to an ellipsis, since names differ at
/// their beginnings and ends. UTF-8; markup is left to those who write into some.
[[nodiscard]] std::string displayText(std::string_view text, std::size_t longest = longestDisplayText);

} // namespace burnwick
