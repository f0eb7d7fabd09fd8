// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

#include <chrono>
#include <functional>

namespace burnwick {

/// Answers whether the user switched this application's notifications off in the desktop's settings. GNOME
/// and Plasma, recognized by XDG_CURRENT_DESKTOP, have such a switch; they accept notifications then, and do
/// not show them.
///
/// Answers within `limit`, after the call returned; false when the switch cannot be read. Not after the
/// context is destroyed.
void askForNotificationSwitch(QObject *context, std::chrono::milliseconds limit,
                              std::function<void(bool switchedOff)> answer);

} // namespace burnwick
