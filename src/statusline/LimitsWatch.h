// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/FileMonitor.h"
#include "statusline/LatestLimits.h"

#include <functional>
#include <vector>

namespace burnwick {

class Clock;

/// Calls a handler with the limits in the file of LatestLimits when they change. Main thread only.
class LimitsWatch final {
public:
    using Handler = std::function<void(const std::vector<Limit> &)>;

    /// Starts nothing. The clock must outlive the watch. The handler runs on the main thread and must not
    /// destroy the watch.
    LimitsWatch(const std::filesystem::path &folder, const Clock &clock, OpenDirectoryEventSource open,
                Handler onLimits);

    /// Starts watching the folder, or the nearest folder above it that exists, and reads the file: the
    /// handler is called at once if it has limits. Later calls compare again; they find a file that an event
    /// did not announce, as after a folder further above was moved.
    void check();

private:
    void watchAbove();

    std::filesystem::path m_folder;
    LatestLimits m_file;
    const Clock &m_clock;
    OpenDirectoryEventSource m_open;
    Handler m_onLimits;
    FileMonitor m_monitor;
    std::filesystem::path m_pathAbove;
    std::unique_ptr<DirectoryEventSource> m_above; ///< of a folder above; null before check()
    std::vector<Limit> m_limits;                   ///< the last ones that the handler got
};

} // namespace burnwick
