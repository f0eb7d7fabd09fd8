// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/LinuxDesktopAppearance.h"

namespace burnwick {

std::unique_ptr<DesktopAppearance> platform::makeDesktopAppearance() {
    return std::make_unique<LinuxDesktopAppearance>();
}

} // namespace burnwick
