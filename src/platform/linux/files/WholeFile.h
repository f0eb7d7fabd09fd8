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

/// Returns the bytes of a regular file; absent for any other file, and when it cannot be read or is longer
/// than `limit` bytes. Does not wait for the writer of a pipe.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::filesystem::path &file, std::size_t limit);

/// Replaces the contents of a regular file in one step: readers find the old contents or the new ones, also
/// after a power failure. Replaces the target of a link. Keeps owner, group, mode and POSIX access list, and
/// at no moment lets anyone read the new contents who could not read the old ones. Fails when the owner or
/// the list cannot be kept; when the group cannot be kept, only the owner can access the new file.
///
/// An error, also that of a missing file, changes nothing. A crash may leave a temporary file, which
/// removeAbandonedFiles() removes. Ends hard links, and drops other extended attributes.
[[nodiscard]] std::error_code replaceWholeFile(const std::filesystem::path &file, std::string_view contents);

/// Replaces a file as replaceWholeFile() does, or creates it with mode 0644, restricted by the process's
/// mask. Fails when the folder is missing or the path is a link to a missing file.
[[nodiscard]] std::error_code writeWholeFile(const std::filesystem::path &file, std::string_view contents);

/// Removes the temporary files that crashes of replaceWholeFile() have left beside the file: regular files of
/// this user with such a name, last modified more than a minute ago. Follows the file's link, as
/// replaceWholeFile() does, and no other.
void removeAbandonedFiles(const std::filesystem::path &file);

} // namespace burnwick
