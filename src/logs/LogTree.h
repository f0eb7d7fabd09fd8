// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "async/StoppableThread.h"
#include "logs/FileStatus.h"

#include <filesystem>
#include <optional>
#include <vector>

namespace burnwick {

/// A file of the log tree as the walk found it. Only regular ones are opened.
struct LogFile {
    std::filesystem::path path;
    FileStatus status;
};

/// Whether the file comes first in the order by time of modification and then by path, bytewise.
[[nodiscard]] bool isBefore(const LogFile &file, const LogFile &other);

/// Whether the file was modified at or after that instant; false if its time is unknown.
[[nodiscard]] bool isModifiedSince(const LogFile &file, Instant instant);

/// Returns every file named *.jsonl below the directories, hidden or not, at any depth, in the order of
/// isBefore(). A directory with several names is listed once. Links to directories are not followed;
/// directories that cannot be listed are ignored. A stop request ends the walk early.
[[nodiscard]] std::vector<LogFile> allLogFiles(const std::vector<std::filesystem::path> &roots,
                                               const StopRequest &stop = {});
/// Returns the log file at the path, which must be below a root; null if no file exists there or its name
/// does not end in ".jsonl".
[[nodiscard]] std::optional<LogFile> logFileAt(const std::filesystem::path &path);
/// Returns those of all that were modified at or after `since`.
[[nodiscard]] std::vector<LogFile> recentLogFiles(const std::vector<std::filesystem::path> &roots,
                                                  Instant since);

} // namespace burnwick
