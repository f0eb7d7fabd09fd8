// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "logs/LogFolders.h"

#include "platform/FileIdentity.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <sstream>

#include <unistd.h>

namespace burnwick {

namespace fs = std::filesystem;

namespace {

constexpr const char *logsName = "projects";

/// Returns the path without "." and without a slash at its end.
fs::path normalPath(const fs::path &path) {
    const fs::path normal = path.lexically_normal();
    return normal.has_filename() || !normal.has_relative_path() ? normal : normal.parent_path();
}

fs::path withHome(const fs::path &home, const std::string &path) {
    const bool beginsWithHome = path == "~" || path.starts_with("~/");
    return beginsWithHome ? home / path.substr(std::min<std::size_t>(2, path.size())) : fs::path(path);
}

/// A folder by its real name, if it exists.
struct RealFolder {
    fs::path path;
    std::string realPath; ///< with a slash at its end; empty if it cannot be found
    std::optional<FileIdentity> identity;

    explicit RealFolder(const fs::path &folder)
        : path(folder)
        , identity(identityOf(folder)) {
        std::error_code error;
        const fs::path real = fs::canonical(folder, error);
        if (!error)
            realPath = (real / "").native();
    }
    [[nodiscard]] bool isSame(const RealFolder &other) const {
        return path == other.path || (identity && identity == other.identity);
    }
    [[nodiscard]] bool isBelow(const RealFolder &other) const {
        return !other.realPath.empty() && realPath != other.realPath && realPath.starts_with(other.realPath);
    }
};

} // namespace

std::optional<std::string> environmentVariable(const char *name) {
    const char *value = std::getenv(name);
    return value != nullptr ? std::optional<std::string>(value) : std::nullopt;
}

ClaudeFolder chosenFolder(const fs::path &home, const std::string &text) {
    const fs::path path = normalPath(home / withHome(home, text));
    std::error_code error;
    if (path.filename() == logsName)
        return {path.parent_path(), path, true};
    return {path, fs::is_directory(path / logsName, error) ? path / logsName : path, true};
}

std::vector<ClaudeFolder> claudeFolders(const fs::path &home, const std::vector<std::string> &chosen,
                                        const Environment &environment) {
    std::vector<ClaudeFolder> folders;
    const auto add = [&folders](const ClaudeFolder &folder) {
        if (std::ranges::find(folders, folder.logs, &ClaudeFolder::logs) == folders.end())
            folders.push_back(folder);
    };
    const auto addConfiguration = [&add](const fs::path &path) { add({path, path / logsName}); };
    addConfiguration(home / ".claude");
    std::istringstream named(environment("CLAUDE_CONFIG_DIR").value_or(""));
    for (std::string name; std::getline(named, name, ',');) {
        name.erase(0, name.find_first_not_of(' '));
        name.erase(name.find_last_not_of(' ') + 1);
        if (!name.empty())
            addConfiguration(normalPath(fs::absolute(withHome(home, name))));
    }
    const fs::path xdg = environment("XDG_CONFIG_HOME").value_or("");
    addConfiguration((xdg.is_absolute() ? normalPath(xdg) : home / ".config") / "claude");
    for (const std::string &path : chosen) {
        if (!path.empty())
            add(chosenFolder(home, path));
    }
    return folders;
}

std::vector<fs::path> logFoldersOf(const std::vector<ClaudeFolder> &folders) {
    std::vector<fs::path> paths;
    std::ranges::transform(folders, std::back_inserter(paths), &ClaudeFolder::logs);
    return paths;
}

std::vector<fs::path> configurationFoldersOf(const std::vector<ClaudeFolder> &folders) {
    std::vector<fs::path> paths;
    std::ranges::transform(folders, std::back_inserter(paths), &ClaudeFolder::configuration);
    return paths;
}

std::vector<fs::path> distinctFolders(const std::vector<fs::path> &folders) {
    if (folders.size() < 2)
        return folders;
    const std::vector<RealFolder> all(folders.begin(), folders.end());
    std::vector<fs::path> distinct;
    for (auto folder = all.begin(); folder != all.end(); ++folder) {
        const bool isKnown =
            std::any_of(all.begin(), folder, [&](const RealFolder &other) { return folder->isSame(other); });
        if (!isKnown &&
            std::ranges::none_of(all, [&](const RealFolder &other) { return folder->isBelow(other); }))
            distinct.push_back(folder->path);
    }
    return distinct;
}

std::error_code folderError(const fs::path &folder) {
    std::error_code error;
    static_cast<void>(fs::directory_iterator(folder, error));
    // Of a folder without permission to search it, the names can be listed but no file be read.
    if (!error && ::access(folder.c_str(), X_OK) != 0)
        error = {errno, std::generic_category()};
    return error;
}

std::string folderErrorText(const std::error_code &error) {
    if (error == std::errc::no_such_file_or_directory)
        return "No such folder";
    if (error == std::errc::not_a_directory)
        return "Not a folder";
    if (error == std::errc::permission_denied)
        return "No permission to read it";
    return error.message();
}

} // namespace burnwick
