// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/LinuxSleepMonitor.h"

namespace burnwick {

std::unique_ptr<SleepMonitor> platform::makeSleepMonitor() {
    return std::make_unique<LinuxSleepMonitor>();
}

} // namespace burnwick
