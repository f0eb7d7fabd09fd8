// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "logs/LogTree.h"
#include "logs/ReadingPosition.h"

#include <chrono>
#include <thread>

namespace burnwick::test {

/// Waits until no later change of a log can leave its status as it is; see isSettled().
inline void waitUntilSettled(const std::filesystem::path &projects) {
    using std::chrono::system_clock;
    for (const LogFile &log : allLogFiles({projects})) {
        while (!isSettled(log.status, std::chrono::time_point_cast<Instant::duration>(system_clock::now())))
            std::this_thread::yield();
    }
}

} // namespace burnwick::test
