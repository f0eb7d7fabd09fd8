// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <system_error>
#include <vector>

namespace burnwick {

/// A folder with Claude Code's configuration, and the folder of its logs.
struct ClaudeFolder {
    std::filesystem::path configuration; ///< where the login may be
    std::filesystem::path logs;
    bool isChosen = false; ///< whether the user named it in the settings

    bool operator==(const ClaudeFolder &) const = default;
};

/// Returns the value of an environment variable; null if it is not set.
using Environment = std::function<std::optional<std::string>(const char *name)>;
[[nodiscard]] std::optional<std::string> environmentVariable(const char *name);

/// Returns the folders that may have logs, which need not exist: ".claude" of the home directory, those that
/// CLAUDE_CONFIG_DIR names (one, or several with commas between them), "claude" in $XDG_CONFIG_HOME or else
/// in ".config", and the chosen ones. Each is named once.
[[nodiscard]] std::vector<ClaudeFolder> claudeFolders(const std::filesystem::path &home,
                                                      const std::vector<std::string> &chosen = {},
                                                      const Environment &environment = environmentVariable);

/// Returns the folder that a chosen text names. It may be that of the configuration or of the logs; "~"
/// begins a path in the home directory.
[[nodiscard]] ClaudeFolder chosenFolder(const std::filesystem::path &home, const std::string &text);

[[nodiscard]] std::vector<std::filesystem::path> logFoldersOf(const std::vector<ClaudeFolder> &folders);
[[nodiscard]] std::vector<std::filesystem::path>
configurationFoldersOf(const std::vector<ClaudeFolder> &folders);

/// Returns the folders without those that another one covers: the first name of a folder with several names
/// stays, and of nested folders the outer one. Folders that cannot be found stay.
[[nodiscard]] std::vector<std::filesystem::path>
distinctFolders(const std::vector<std::filesystem::path> &folders);

/// Returns the error of listing the folder's files; none if they can be listed.
[[nodiscard]] std::error_code folderError(const std::filesystem::path &folder);
/// Returns the error as text for the user, such as "No such folder".
[[nodiscard]] std::string folderErrorText(const std::error_code &error);

} // namespace burnwick
