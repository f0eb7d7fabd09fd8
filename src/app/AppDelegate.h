// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Clock.h"
#include "platform/ApplicationInstance.h"
#include "platform/SecretStore.h"
#include "platform/TerminalLauncher.h"
#include "prefs/Endpoints.h"
#include "prefs/PreferencesManager.h"
#include "prefs/UserDefaults.h"
#include "state/AccountServices.h"
#include "state/AppState.h"
#include "state/QuotaAlerts.h"
#include "state/Scheduler.h"
#include "ui/dashboard/MainWindowView.h"
#include "ui/statusbar/StatusBarController.h"

#include <memory>
#include <optional>

namespace burnwick {

/// Makes the program's parts, puts them together and takes them down again. One per process, made once the
/// application object exists. Main thread only.
class AppDelegate final {
public:
    AppDelegate();

    /// Shows the status item and the window and starts the refresh cycle; then does what the start asks for.
    void launch(const ApplicationRequest &start);
    /// Does what a later start or the desktop asks for. Once launched.
    void perform(const ApplicationRequest &request);
    /// Stops timers and watching; nothing is saved.
    void terminate();

private:
    /// Tells nobody.
    class SilentAlerts final : public QuotaAlerts {
        void checkQuota(std::optional<Instant>, bool, bool, double) override {}
        void sendSessionReset() override {}
    };

    [[nodiscard]] AppState::Services services();

    SystemClock m_clock;
    Calendar m_calendar;
    EventLoopScheduler m_scheduler;
    UserDefaults m_defaults;
    PreferencesManager m_preferences;
    Endpoints m_endpoints;
    std::unique_ptr<SecretStore> m_secretStore;
    std::unique_ptr<TerminalLauncher> m_terminal;
    AccountServices m_account;
    SilentAlerts m_alerts;
    AppState m_appState;
    std::optional<StatusBarController> m_statusBarController;
    std::optional<MainWindowView> m_mainWindow;
};

} // namespace burnwick
