// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <cstdint>
#include <filesystem>
#include <optional>

namespace burnwick {

/// What the file system knows of a file. Instants outside the representable years are the nearest ones.
struct FileStatus {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::uint64_t size = 0;
    std::optional<Instant> modified; ///< null if the file cannot be examined
    Instant changed;                 ///< the last change of contents or attributes; no program can set it
    bool regular = false;            ///< a regular file, or a link to one

    bool operator==(const FileStatus &) const = default;
};

/// Returns the status of the file at the path, links followed, or of an open file. Safe from any thread.
[[nodiscard]] FileStatus statusOf(const std::filesystem::path &path);
[[nodiscard]] FileStatus statusOf(int descriptor);

} // namespace burnwick
