// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Clock.h"
#include "prefs/PreferencesManager.h"
#include "prefs/UserDefaults.h"
#include "state/AppState.h"
#include "state/Scheduler.h"
#include "ui/dashboard/MainWindowView.h"
#include "ui/statusbar/StatusBarController.h"

#include <optional>

namespace burnwick {

/// Makes the program's parts, puts them together and takes them down again. One per process, made once the
/// application object exists. Main thread only.
class AppDelegate final {
public:
    AppDelegate();

    /// Shows the status item and the window and starts the refresh cycle.
    void launch();
    /// Stops timers and watching; nothing is saved.
    void terminate();

private:
    SystemClock m_clock;
    EventLoopScheduler m_scheduler;
    UserDefaults m_defaults;
    PreferencesManager m_preferences;
    AppState m_appState;
    std::optional<StatusBarController> m_statusBarController;
    std::optional<MainWindowView> m_mainWindow;
};

} // namespace burnwick
