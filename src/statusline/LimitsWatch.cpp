// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "statusline/LimitsWatch.h"

#include "model/Clock.h"

#include <system_error>
#include <utility>

namespace burnwick {

namespace {

std::filesystem::path nearestFolder(std::filesystem::path path) {
    std::error_code error;
    while (!std::filesystem::is_directory(path, error) && path.has_relative_path())
        path = path.parent_path();
    return path;
}

} // namespace

LimitsWatch::LimitsWatch(const std::filesystem::path &folder, const Clock &clock,
                         OpenDirectoryEventSource open, Handler onLimits)
    : m_folder(folder)
    , m_file(folder)
    , m_clock(clock)
    , m_open(std::move(open))
    , m_onLimits(std::move(onLimits))
    , m_monitor(
          folder, [this] { check(); }, m_open) {}

void LimitsWatch::check() {
    // The folder above is watched first: it announces a folder that appears from now on.
    watchAbove();
    m_monitor.start();
    auto limits = m_file.read(m_clock.now());
    if (limits.empty() || limits == m_limits)
        return;
    m_limits = std::move(limits);
    m_onLimits(m_limits);
}

void LimitsWatch::watchAbove() {
    // Again if a folder has appeared between the search and the watch.
    for (int tries = 0; tries < 3; ++tries) {
        auto path = nearestFolder(m_folder.parent_path());
        if (m_above && path == m_pathAbove && m_above->isAt(path))
            return;
        m_above = m_open(path, [this] { check(); });
        m_pathAbove = std::move(path);
    }
}

} // namespace burnwick
