// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/TreeEventSource.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace burnwick {

/// Flags of events that decide what they mean: kFSEventStreamEventFlag and the name. Others may come with
/// them.
namespace fsevents {
inline constexpr std::uint32_t MustScanSubDirs = 0x1;
inline constexpr std::uint32_t UserDropped = 0x2;
inline constexpr std::uint32_t KernelDropped = 0x4;
inline constexpr std::uint32_t EventIdsWrapped = 0x8;
inline constexpr std::uint32_t RootChanged = 0x20;
inline constexpr std::uint32_t Mount = 0x40;
inline constexpr std::uint32_t Unmount = 0x80;
inline constexpr std::uint32_t ItemIsFile = 0x10000;
inline constexpr std::uint32_t ItemIsDir = 0x20000;
inline constexpr std::uint32_t ItemIsSymlink = 0x40000;
} // namespace fsevents

/// A watched directory, by two names.
struct WatchedRoot {
    std::filesystem::path path; ///< as the caller named it
    std::string resolved;       ///< as FSEvents names it: no links, no slash at the end
};

/// Adds what an event means: a change of one file, or of everything. The event's path is absolute, without
/// links; an event whose path is not below a root changes everything.
void addTreeEvent(TreeChanges &changes, const std::vector<WatchedRoot> &roots, std::string_view path,
                  std::uint32_t flags);

} // namespace burnwick
