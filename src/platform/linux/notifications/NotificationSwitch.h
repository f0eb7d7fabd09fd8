// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

#include <chrono>
#include <functional>

namespace burnwick {

/// Finds out whether the user switched this application's notifications off in the desktop's settings. GNOME
/// and Plasma have such a switch, and take notifications then without showing them; which desktop it is says
/// XDG_CURRENT_DESKTOP. Only reads.
///
/// Answers within `limit`, after the call returned; false where it cannot be found out. The answer is dropped
/// when the context is destroyed first.
void askForNotificationSwitch(QObject *context, std::chrono::milliseconds limit,
                              std::function<void(bool switchedOff)> answer);

} // namespace burnwick
