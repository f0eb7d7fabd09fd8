// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forms/TerminalStyle.h"
#include "model/Snapshot.h"

#include <string>

/// Tables for a terminal in at most 80 columns, each with a line of the totals. Costs are exact; tokens are
/// those of the figures' choice. "no price" replaces a cost where the price list has none.
namespace burnwick {

/// `home` is the user's home folder; paths in it begin with "~".
[[nodiscard]] std::string projectsTable(const UsageFigures &usage, const std::string &home,
                                        TerminalColors colors);
[[nodiscard]] std::string modelsTable(const UsageFigures &usage, TerminalColors colors);
[[nodiscard]] std::string daysTable(const UsageFigures &usage, TerminalColors colors);

} // namespace burnwick
