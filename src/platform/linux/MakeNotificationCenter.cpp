// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/LinuxNotificationCenter.h"

namespace burnwick {

std::unique_ptr<NotificationCenter> platform::makeNotificationCenter() {
    return std::make_unique<LinuxNotificationCenter>();
}

} // namespace burnwick
