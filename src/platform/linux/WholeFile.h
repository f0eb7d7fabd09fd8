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
/// the old contents or the new ones. Follows links, so that they stay. Owner, group and mode are kept, and at
/// no moment can anyone read the new contents who could not read the old ones; where the group cannot be
/// kept, the new file is its owner's alone.
///
/// On an error the old file is as it was, and nothing else is left beside it. Links of a file with several
/// names are cut. Access lists and extended attributes are not carried over.
[[nodiscard]] std::error_code replaceWholeFile(const std::filesystem::path &file, std::string_view contents);

} // namespace burnwick
