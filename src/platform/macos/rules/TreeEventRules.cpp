// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/macos/rules/TreeEventRules.h"

#include <algorithm>

namespace burnwick {

namespace {

using namespace fsevents;

constexpr std::uint32_t changesOfEverything = MustScanSubDirs | UserDropped | KernelDropped |
                                              EventIdsWrapped | RootChanged | Mount | Unmount | ItemIsDir;

} // namespace

void addTreeEvent(TreeChanges &changes, const std::vector<WatchedRoot> &roots, std::string_view path,
                  std::uint32_t flags) {
    // Volumes that do not report single files report folders, without a type.
    const bool isFile = (flags & (ItemIsFile | ItemIsSymlink)) != 0 && (flags & changesOfEverything) == 0;
    const auto root = std::ranges::find_if(
        roots, [path](const WatchedRoot &candidate) { return path.starts_with(candidate.resolved + '/'); });
    if (isFile && root != roots.end())
        changes.files.insert(root->path / path.substr(root->resolved.size() + 1));
    else
        changes.isEverything = true;
}

} // namespace burnwick
