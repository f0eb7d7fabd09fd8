// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "LogFacts.h"

#include <cstdint>
#include <filesystem>

namespace burnwick::bench {

enum class TreeKind {
    sessions, ///< several hundred sessions of twelve projects within two months
    longLines ///< a single session whose lines are of one megabyte each
};

/// Sees to it that the directory is a home with Claude Code's logs of about that many bytes, the same ones
/// every time, and gives what is in them. A complete tree is used again. Bytes and the times in the lines are
/// fixed; the files' times are those of their last lines, moved so that the newest file is of now.
/// Throws std::runtime_error, also for a directory that holds something else.
LogFacts prepareTree(TreeKind kind, std::uint64_t bytes, const std::filesystem::path &directory);

/// Sets the modification time of all its logs to now, so that each counts as recent and as changed.
void makeRecent(const std::filesystem::path &directory);

} // namespace burnwick::bench
