// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

class QWidget;

namespace burnwick {

/// Shows the window in front of all others and activates it. `activationToken` is the desktop's permission
/// and valid once; without it a visible Wayland window is hidden and shown again, because compositors focus
/// new windows only. Main thread only.
void bringToFront(QWidget &window, const std::string &activationToken);

/// Moves the window's layout below a title bar of that height, in logical pixels, which covers its top.
void leaveTopTo(int titleBarHeight, QWidget &window);

} // namespace burnwick
