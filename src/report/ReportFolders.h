// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/LogFolders.h"
#include "platform/UserDefaults.h"
#include "report/ReportOptions.h"

#include <filesystem>
#include <string_view>
#include <vector>

namespace burnwick {

/// Prints the reason in a line on standard error, with the program's name.
void complain(std::string_view reason);

[[nodiscard]] std::filesystem::path homeDirectory();

/// Returns Claude Code's folders and those of the settings.
[[nodiscard]] std::vector<ClaudeFolder> userFolders(const UserDefaults &defaults);

/// Returns the folders of the logs, and prints a line for each that cannot be read. Those that nobody has
/// chosen may be missing. Throws std::runtime_error if no folder of the options can be read.
[[nodiscard]] std::vector<std::filesystem::path> foldersToRead(const ReportOptions &options,
                                                               const UserDefaults &defaults);

} // namespace burnwick
