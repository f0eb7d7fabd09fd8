// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forms/ReportFigures.h"
#include "forms/TerminalStyle.h"

#include <string>

namespace burnwick {

/// The report as a table for people, at most 80 columns wide, with its last line feed.
[[nodiscard]] std::string tableForm(const ReportFigures &figures, TerminalColors colors);

} // namespace burnwick
