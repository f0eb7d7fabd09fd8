// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

namespace burnwick {

/// Watches one directory and reports that its entries were created, removed or moved. Ignores its
/// subdirectories, and changes of a file's contents or attributes. Main thread only.
class DirectoryEventSource {
public:
    /// Ends the watch and closes the descriptor.
    virtual ~DirectoryEventSource() = default;

    /// Returns whether the watch still works and the path refers to the watched directory. False, for
    /// instance, after the directory was deleted or moved, or events were lost.
    [[nodiscard]] virtual bool isAt(const std::filesystem::path &path) const = 0;
    /// Returns the open descriptor.
    [[nodiscard]] virtual int descriptor() const noexcept = 0;
};

/// Starts to watch a directory; null when the path is missing, unreadable or not a directory. The event loop
/// calls `onChange` once for all pending changes; it may destroy the source.
using OpenDirectoryEventSource = std::function<std::unique_ptr<DirectoryEventSource>(
    const std::filesystem::path &directory, std::function<void()> onChange)>;

} // namespace burnwick
