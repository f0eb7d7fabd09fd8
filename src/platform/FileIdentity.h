// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <optional>
#include <utility>

#include <sys/stat.h>

namespace burnwick {

/// A file's device and number, which a rename keeps.
using FileIdentity = std::pair<dev_t, ino_t>;

/// Returns the identity of the file or folder at the path, links followed; null when the system finds none.
/// Any thread.
[[nodiscard]] inline std::optional<FileIdentity> identityOf(const std::filesystem::path &path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == -1)
        return std::nullopt;
    return FileIdentity(status.st_dev, status.st_ino);
}

} // namespace burnwick
