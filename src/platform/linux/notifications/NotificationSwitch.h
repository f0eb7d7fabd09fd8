// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>

#include <chrono>
#include <functional>

namespace burnwick {

/// Answers whether the user switched this application's notifications off in the desktop's settings. GNOME
/// and Plasma, known by XDG_CURRENT_DESKTOP, have such a switch, and accept notifications then without
/// showing them. Only reads.
///
/// Answers within `limit`, after the call returned; false where the switch cannot be read. The answer is
/// dropped when the context is destroyed first.
void askForNotificationSwitch(QObject *context, std::chrono::milliseconds limit,
                              std::function<void(bool switchedOff)> answer);

} // namespace burnwick
