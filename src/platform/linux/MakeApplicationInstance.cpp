// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/BusApplicationInstance.h"

namespace burnwick {

std::unique_ptr<ApplicationInstance> platform::makeApplicationInstance() {
    return std::make_unique<BusApplicationInstance>();
}

} // namespace burnwick
