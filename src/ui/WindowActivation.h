// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <string>

class QWidget;

namespace burnwick {

/// Shows the window in front of all others and gives it the keyboard. `activationToken` is the desktop's
/// permission to do so, used once; without it a Wayland window that is already shown is mapped anew, because
/// compositors give the focus to new windows only. Main thread.
void bringToFront(QWidget &window, const std::string &activationToken);

} // namespace burnwick
