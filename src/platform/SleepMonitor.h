// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <functional>

namespace burnwick {

/// Follows the machine's sleep. Main thread only.
class SleepMonitor {
public:
    virtual ~SleepMonitor() = default;

    /// Calls the handler each time the machine has woken up or its clock was set, once or twice for one such
    /// event; the network may not be available yet. On the main thread, not after this object is destroyed.
    /// Call follow() at most once.
    virtual void follow(std::function<void()> onWake) = 0;
};

} // namespace burnwick
