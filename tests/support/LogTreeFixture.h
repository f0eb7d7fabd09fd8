// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace burnwick::test {

/// A new directory below the system's temporary one. The destructor removes it.
class TemporaryDirectory {
public:
    TemporaryDirectory();
    ~TemporaryDirectory();
    TemporaryDirectory(const TemporaryDirectory &) = delete;
    TemporaryDirectory &operator=(const TemporaryDirectory &) = delete;

    [[nodiscard]] const std::filesystem::path &path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

/// Writes the bytes to the file and creates its directories.
void writeFile(const std::filesystem::path &file, std::string_view bytes);
/// Writes a script that its owner may execute.
void writeProgram(const std::filesystem::path &file, std::string_view script);
/// Returns the contents of the file; empty when it cannot be read.
[[nodiscard]] std::string bytesOf(const std::filesystem::path &file);
/// Returns the number of files and folders in the folder.
[[nodiscard]] std::ptrdiff_t entriesOf(const std::filesystem::path &folder);
void setModified(const std::filesystem::path &file, Instant modified);

/// A home directory with session logs.
class LogHome {
public:
    [[nodiscard]] const std::filesystem::path &path() const { return m_directory.path(); }
    [[nodiscard]] std::filesystem::path projects() const { return path() / ".claude" / "projects"; }
    /// Moves a complete log with that time of modification to a path below the projects directory.
    std::filesystem::path add(const std::string &name, std::string_view bytes, Instant modified) const;

private:
    TemporaryDirectory m_directory;
};

/// Returns a usage line with its line feed.
std::string usageLine(std::string_view timestamp, long long input, long long output,
                      long long cacheCreation = 0, long long cacheRead = 0,
                      std::string_view model = "claude-sonnet-4-5");

} // namespace burnwick::test
