// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"

#include <QtCore/QtGlobal>

#include <algorithm>

namespace burnwick {

bool platform::hasDisplay() {
    constexpr const char *names[] = {"DISPLAY", "WAYLAND_DISPLAY", "WAYLAND_SOCKET", "QT_QPA_PLATFORM"};
    return !std::ranges::all_of(names, qEnvironmentVariableIsEmpty);
}

} // namespace burnwick
