// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/LinuxStatusItem.h"

namespace burnwick {

std::unique_ptr<StatusItem> platform::makeStatusItem() {
    return std::make_unique<LinuxStatusItem>();
}

} // namespace burnwick
