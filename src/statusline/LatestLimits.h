// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Limit.h"

#include <filesystem>
#include <span>
#include <vector>

namespace burnwick {

/// The file with the latest observation of each limit from the status line. Several processes may use it at
/// once. Safe from any thread.
class LatestLimits final {
public:
    /// Does not access the folder.
    explicit LatestLimits(const std::filesystem::path &folder)
        : m_file(folder / "limits.json") {}

    /// Returns the observations of windows that are not over. Malformed observations and those more than a
    /// minute after `now` are left out; empty if the file is missing, malformed or cannot be read.
    [[nodiscard]] std::vector<Limit> read(Instant now) const;

    /// Adds the observations to those of other limits whose windows are not over. Replaces the file as a
    /// whole, for the user alone, and makes the folder if it is missing; the last of several writers wins.
    /// Does nothing if no limit has changed and the file's observations are under a minute old. Returns false
    /// if the file cannot be written.
    bool record(std::span<const Limit> observed) const;

private:
    std::filesystem::path m_file;
};

/// Adds observations to those of other limits: session, weekly, then the scoped ones. The later observation
/// of the same limit stays; of two at the same time, the added one.
void mergeLimits(std::vector<Limit> &limits, std::span<const Limit> observed);

} // namespace burnwick
