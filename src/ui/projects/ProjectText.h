// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Calendar.h"

#include <QString>

#include <optional>
#include <string_view>

/// Texts for projects. Paths are untrusted; the texts are safe for display, but may be long.
namespace burnwick {

/// The folder's name, or "Unknown project" for an empty path.
[[nodiscard]] QString projectName(std::string_view path);

/// The path with "~" for the home folder; empty for an empty path.
[[nodiscard]] QString projectPath(std::string_view path, std::string_view home);

/// "36%", or "<1%" for a share of less than half a percent, but more than 0.
[[nodiscard]] QString shareText(double percent);

/// "2 minutes ago", "3h ago", "Yesterday", "Oct 21", and with a year if it is another one; "–" if null.
[[nodiscard]] QString lastUsedText(const std::optional<Instant> &lastUsed, Instant now,
                                   const Calendar &calendar);

} // namespace burnwick
