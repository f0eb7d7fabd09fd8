// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>

namespace burnwick {

/// Tells that entries of one directory were created, removed or moved: of this directory itself, not of those
/// below it, and not that a file's contents or attributes changed.
class DirectoryEventSource {
public:
    /// Opening and closing belong to the owner's thread of events; see wait().
    virtual ~DirectoryEventSource() = default;

    /// Blocks until something happened. True: the entries changed. False: wake() was called, or the source
    /// can deliver nothing more.
    [[nodiscard]] virtual bool wait() = 0;
    /// Makes a running or the next wait() return false. From any thread.
    virtual void wake() = 0;
    /// The open descriptor.
    [[nodiscard]] virtual int descriptor() const = 0;
};

/// Opens a source for the directory; null when the path is missing, unreadable or no directory.
using OpenDirectoryEventSource =
    std::function<std::unique_ptr<DirectoryEventSource>(const std::filesystem::path &)>;

} // namespace burnwick
