// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forms/ReportFigures.h"

#include <string>
#include <string_view>

/// What the bars of the GTK desktops draw: text in Pango markup.
namespace burnwick {

/// The text with the characters of the markup escaped.
[[nodiscard]] std::string escapedForPango(std::string_view text);

/// The status title with its weights, dimmed stretches and coloured dot.
[[nodiscard]] std::string pangoTitle(const StatusTitle &title);

/// The session's figures in words, several lines without a line feed at the end.
[[nodiscard]] std::string pangoToolTip(const SessionFigures &session);

} // namespace burnwick
