// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/macos/rules/TreeEventRules.h"

namespace burnwick {

namespace {

using namespace fsevents;

constexpr std::uint32_t changesOfEverything = MustScanSubDirs | UserDropped | KernelDropped |
                                              EventIdsWrapped | RootChanged | Mount | Unmount | ItemIsDir;

} // namespace

void addTreeEvent(TreeChanges &changes, const WatchedRoot &root, std::string_view path, std::uint32_t flags) {
    // Volumes that do not report single files report folders, without a type.
    const bool isFile = (flags & (ItemIsFile | ItemIsSymlink)) != 0 && (flags & changesOfEverything) == 0;
    const std::string prefix = root.resolved + '/';
    if (isFile && path.starts_with(prefix))
        changes.files.insert(root.path / path.substr(prefix.size()));
    else
        changes.isEverything = true;
}

} // namespace burnwick
