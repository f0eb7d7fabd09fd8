// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace burnwick::test {

/// A directory of its own below the system's temporary one, gone with the object.
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

/// Writes the bytes to the file, making its directories.
void writeFile(const std::filesystem::path &file, std::string_view bytes);
/// Writes a script that its owner may start.
void writeProgram(const std::filesystem::path &file, std::string_view script);
/// What the file holds; empty when it cannot be read.
[[nodiscard]] std::string bytesOf(const std::filesystem::path &file);
/// How many files and folders the folder holds.
[[nodiscard]] std::ptrdiff_t entriesOf(const std::filesystem::path &folder);
void setModified(const std::filesystem::path &file, Instant modified);

/// A home directory with session logs.
class LogHome {
public:
    [[nodiscard]] const std::filesystem::path &path() const { return m_directory.path(); }
    [[nodiscard]] std::filesystem::path projects() const { return path() / ".claude" / "projects"; }
    /// Puts a log below the projects directory, whole from its first moment there, last modified then.
    std::filesystem::path add(const std::string &name, std::string_view bytes, Instant modified) const;

private:
    TemporaryDirectory m_directory;
};

/// A usage line with its line feed.
std::string usageLine(std::string_view timestamp, long long input, long long output,
                      long long cacheCreation = 0, long long cacheRead = 0,
                      std::string_view model = "claude-sonnet-4-5");

} // namespace burnwick::test
