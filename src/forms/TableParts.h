// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/TimeFilter.h"

#include <string>
#include <string_view>

/// What the tables for a terminal have in common.
namespace burnwick {

inline constexpr int indentColumns = 2;
inline constexpr int contentColumns = 76; ///< with the indent: 78

/// Returns "all time", "last 30 days" or "last 7 days".
[[nodiscard]] std::string_view periodText(TimeFilter filter) noexcept;

/// Returns a bar of that many columns at 100 %, padded with blanks. A share above 0 shows, however small it
/// is.
[[nodiscard]] std::string percentageBar(double percentage, int columns);

} // namespace burnwick
