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

/// Returns the bytes of a regular file; absent when it is not one, cannot be read or is longer than `limit`
/// bytes. Does not wait for the writer of a pipe.
[[nodiscard]] std::optional<std::string> readWholeFile(const std::filesystem::path &file, std::size_t limit);

/// Replaces the contents of a regular file in one step, also through a power failure: a reader finds the old
/// contents or the new ones. Follows links, so that they stay. Keeps owner, group, mode and POSIX access
/// list; at no moment can anyone read the new contents who could not read the old ones. Where the owner or
/// the list cannot be kept, the replacement fails; where the group cannot be kept, the new file is its
/// owner's alone, without a list.
///
/// On an error, also when the file is missing, all is as it was; a crash may leave a temporary file, which
/// removeAbandonedFiles() removes. Cuts hard links, and drops other extended attributes.
[[nodiscard]] std::error_code replaceWholeFile(const std::filesystem::path &file, std::string_view contents);

/// Replaces a file as replaceWholeFile() does, or creates it, readable and writable by its owner alone. Fails
/// when the folder is missing or the path is a link to nothing.
[[nodiscard]] std::error_code writeWholeFile(const std::filesystem::path &file, std::string_view contents);

/// Removes the temporary files that crashes of replaceWholeFile() have left beside the file: regular files of
/// this user with a name as it gives them, last modified more than a minute ago. Follows the file's link, as
/// replaceWholeFile() does, and no other.
void removeAbandonedFiles(const std::filesystem::path &file);

} // namespace burnwick
