// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <vector>

namespace burnwick {

/// What may have changed below the watched directories.
struct TreeChanges {
    /// Files that were created, written, touched, replaced, moved or removed. Each path begins with a root
    /// as the caller named it; the file may no longer exist.
    std::set<std::filesystem::path> files;
    /// Folders were created, removed, moved or changed, or events were lost: compare the whole tree.
    bool isEverything = false;
};

/// Watches directories and all folders below them. Links below them are not followed. Main thread only.
class TreeEventSource {
public:
    /// Ends the watch.
    virtual ~TreeEventSource() = default;

    /// Returns whether these are the watched roots, and each refers to the directory that was found there, or
    /// still to none. False, for instance, after a directory was made, deleted or moved; then open the roots
    /// again.
    [[nodiscard]] virtual bool isAt(const std::vector<std::filesystem::path> &roots) const = 0;
    /// Returns whether changes in all folders that were found are reported. Once false, for instance at the
    /// system's limit on watches, it stays so.
    [[nodiscard]] virtual bool isComplete() const = 0;
    /// Returns the changes since the last call, perhaps none. The next change calls the handler again.
    [[nodiscard]] virtual TreeChanges take() = 0;
};

/// Starts to watch the trees below the roots, none of which is below another. Leaves out roots that are
/// missing, unreadable or no directories; null when none is left, and when the system has no more watches.
/// Changes before the return may not be reported, nor those that another machine makes: read the trees
/// afterwards. The event loop calls `onChange` at the first change, and not again before take(); it may
/// destroy the source.
using OpenTreeEventSource = std::function<std::unique_ptr<TreeEventSource>(
    const std::vector<std::filesystem::path> &roots, std::function<void()> onChange)>;

} // namespace burnwick
