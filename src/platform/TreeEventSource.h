// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <set>

namespace burnwick {

/// What may have changed below a watched directory.
struct TreeChanges {
    /// Files that were created, written, touched, replaced, moved or removed. Each path begins with the root
    /// as the caller named it; the file may no longer exist.
    std::set<std::filesystem::path> files;
    /// Folders were created, removed, moved or changed, or events were lost: compare the whole tree.
    bool isEverything = false;
};

/// Watches a directory and all folders below it. Links below it are not followed. Main thread only.
class TreeEventSource {
public:
    /// Ends the watch.
    virtual ~TreeEventSource() = default;

    /// Returns whether the watch still works and the path refers to the watched directory. False, for
    /// instance, after the directory was deleted or moved; then open the path again.
    [[nodiscard]] virtual bool isAt(const std::filesystem::path &path) const = 0;
    /// Returns whether changes in all folders are reported. Once false, for instance at the system's limit on
    /// watches, it stays so.
    [[nodiscard]] virtual bool isComplete() const = 0;
    /// Returns the changes since the last call, perhaps none. The next change calls the handler again.
    [[nodiscard]] virtual TreeChanges take() = 0;
};

/// Starts to watch a tree; null when the path is missing, unreadable or not a directory, and when the system
/// has no more watches. Changes before the return may not be reported: read the tree afterwards. The event
/// loop calls `onChange` at the first change, and not again before take(); it may destroy the source.
using OpenTreeEventSource = std::function<std::unique_ptr<TreeEventSource>(const std::filesystem::path &root,
                                                                           std::function<void()> onChange)>;

} // namespace burnwick
