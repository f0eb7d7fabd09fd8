// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

namespace burnwick {

/// Reports that entries of one directory were created, removed or moved. Ignores its subdirectories, and
/// changes of a file's contents or attributes.
class DirectoryEventSource {
public:
    /// Closes the descriptor. Must not run during wait().
    virtual ~DirectoryEventSource() = default;

    /// Blocks until an event. Returns true when the entries changed, once or more often; false after wake(),
    /// and when no more events can follow, for instance because the directory was deleted or events were
    /// lost. On one thread at a time.
    [[nodiscard]] virtual bool wait() = 0;
    /// Makes the running and each later wait() return false. From any thread.
    virtual void wake() noexcept = 0;
    /// Returns whether the path refers to the watched directory now. From any thread.
    [[nodiscard]] virtual bool isAt(const std::filesystem::path &path) const = 0;
    /// Returns the open descriptor.
    [[nodiscard]] virtual int descriptor() const noexcept = 0;
};

/// Opens a source for the directory; null when the path is missing, unreadable or no directory.
using OpenDirectoryEventSource =
    std::function<std::unique_ptr<DirectoryEventSource>(const std::filesystem::path &)>;

} // namespace burnwick
