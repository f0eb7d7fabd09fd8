// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace burnwick {

/// The bytes of a regular file; absent when it is none, cannot be read or is longer than `limit` bytes. Waits
/// for no writer of a pipe.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::filesystem::path &file, std::size_t limit);

/// Replaces the contents of a regular file in one step, also through a power failure: whoever opens it finds
/// the old contents or the new ones. Follows links, so that they stay. Owner, group, mode and POSIX access
/// list are kept, and at no moment can anyone read the new contents who could not read the old ones. Where
/// the owner or the list cannot be kept, the replacement fails; where the group cannot be kept, the new file
/// is its owner's alone, and no list is carried over.
///
/// On an error the old file is as it was, and nothing else is left beside it; a crash may leave a temporary
/// file, which removeAbandonedFiles() removes. Links of a file with several names are cut. Other extended
/// attributes are not carried over.
[[nodiscard]] std::error_code replaceWholeFile(const std::filesystem::path &file, std::string_view contents);

/// Removes the temporary files that crashes of replaceWholeFile() have left beside the file: regular files of
/// this user with a name as it gives them, last modified more than a minute ago. Follows the file's link, as
/// replaceWholeFile() does, and no other.
void removeAbandonedFiles(const std::filesystem::path &file);

} // namespace burnwick
