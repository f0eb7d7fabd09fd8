// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/FileStatus.h"

#include <cstddef>

namespace burnwick {

/// How far a log file was read, and what shows whether it is unchanged or has only grown since.
struct ReadingPosition {
    FileStatus status;             ///< when it was opened
    std::uint64_t offset = 0;      ///< the end of the last whole line; 0 if it is not UTF-8 throughout
    std::uint64_t fingerprint = 0; ///< of the bytes before the offset
    std::size_t entries = 0;       ///< the number of entries before the offset
    bool includesRest = true;      ///< whether bytes behind the offset, a line without line feed, were read
    /// Whether any later change gives the file another status: its last change was long enough before the
    /// reading.
    bool settled = false;

    bool operator==(const ReadingPosition &) const = default;
};

/// Returns whether a file with that status has the contents that were read.
[[nodiscard]] bool isUnchanged(const ReadingPosition &position, const FileStatus &status);

/// How closely a file was followed since its last reading.
enum class Watch {
    none,      ///< it may have been rewritten and have grown since
    continuous ///< each change was announced and read within a moment
};

/// Returns whether the open file with that status still has the bytes before the position's offset, so that
/// reading may continue there. Compares all of them in a short file. In a long one it compares samples, and
/// only if the file was watched; otherwise it returns false.
[[nodiscard]] bool hasGrown(const ReadingPosition &position, const FileStatus &status, int descriptor,
                            Watch watch);

/// Returns a hash of samples of the open file's bytes before the offset; null if they cannot be read.
[[nodiscard]] std::optional<std::uint64_t> fingerprintOf(int descriptor, std::uint64_t offset);

/// Returns whether a file last changed at that instant can no longer change without another instant, `now`
/// being the system's time before its status was read.
[[nodiscard]] bool isSettled(const FileStatus &status, Instant now);

} // namespace burnwick
