// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/LinuxDesktopSettings.h"

namespace burnwick {

std::unique_ptr<DesktopSettings> platform::makeDesktopSettings() {
    return std::make_unique<LinuxDesktopSettings>();
}

} // namespace burnwick
