// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <utility>

namespace burnwick::test {

/// The files below the directory, by path, with their times and contents.
inline std::map<std::string, std::pair<std::filesystem::file_time_type, std::string>>
filesIn(const std::filesystem::path &directory) {
    std::map<std::string, std::pair<std::filesystem::file_time_type, std::string>> files;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(directory)) {
        if (!entry.is_regular_file())
            continue;
        std::ifstream file(entry.path(), std::ios::binary);
        files[entry.path().lexically_relative(directory)] = {
            entry.last_write_time(), std::string(std::istreambuf_iterator<char>(file), {})};
    }
    return files;
}

} // namespace burnwick::test
