// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

namespace burnwick {

/// The window manager decorates windows.
std::unique_ptr<WindowChrome> platform::makeWindowChrome() {
    return nullptr;
}

} // namespace burnwick
