// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "support/LogTreeFixture.h"

#include <filesystem>
#include <map>
#include <string>
#include <utility>

namespace burnwick::test {

/// The times and contents of all files below the directory, by relative path.
inline std::map<std::string, std::pair<std::filesystem::file_time_type, std::string>>
filesIn(const std::filesystem::path &directory) {
    std::map<std::string, std::pair<std::filesystem::file_time_type, std::string>> files;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(directory)) {
        if (!entry.is_regular_file())
            continue;
        files[entry.path().lexically_relative(directory)] = {entry.last_write_time(), bytesOf(entry.path())};
    }
    return files;
}

} // namespace burnwick::test
