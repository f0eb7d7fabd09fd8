// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "async/Scheduler.h"
#include "ledger/Ledger.h"
#include "model/Clock.h"
#include "notify/NotificationManager.h"
#include "platform/ApplicationInstance.h"
#include "platform/DesktopAppearance.h"
#include "platform/DesktopSettings.h"
#include "platform/LoginItem.h"
#include "platform/NotificationCenter.h"
#include "platform/SecretStore.h"
#include "platform/SleepMonitor.h"
#include "platform/TerminalLauncher.h"
#include "platform/UserDefaults.h"
#include "platform/WindowChrome.h"
#include "prefs/Endpoints.h"
#include "prefs/PreferencesManager.h"
#include "state/AppState.h"
#include "statusline/LimitsWatch.h"
#include "ui/dashboard/MainWindowView.h"
#include "ui/settings/SettingsWindowController.h"
#include "ui/statusbar/StatusBarController.h"
#include "ui/theme/ThemeController.h"
#include "update/StandardUpdaterController.h"
#include "update/UpdateChecker.h"
#include "update/UserDriverDelegate.h"

#include <memory>
#include <optional>

namespace burnwick {

/// Owns and connects the parts of the program. One per process, after the application object. The destructor
/// removes windows and status item, then runs the event loop until a running token renewal is stored. Main
/// thread only.
class AppDelegate final {
public:
    AppDelegate();

    /// Shows the status item and the window, starts the refresh cycle and performs the request of this start.
    void launch(const ApplicationRequest &start);
    /// Performs the request of a later start or of the desktop. Call launch() before.
    void perform(const ApplicationRequest &request);
    /// Stops timers and file monitoring; saves nothing.
    void terminate();

private:
    struct ExchangeGuard {
        OAuthFetcher &fetcher;
        ~ExchangeGuard();
    };

    [[nodiscard]] AppState::Services stateServices();
    [[nodiscard]] StandardUpdaterController::Services updaterServices();
    [[nodiscard]] SettingsView::Services settingsServices();
    void showMainWindow(const std::string &activationToken);

    SystemClock m_clock;
    EventLoopScheduler m_scheduler{m_clock};
    std::unique_ptr<UserDefaults> m_defaults;
    PreferencesManager m_preferences;
    Endpoints m_endpoints;
    std::unique_ptr<SecretStore> m_secretStore;
    std::unique_ptr<TerminalLauncher> m_terminal;
    AccountServices m_account;
    ExchangeGuard m_exchangeGuard; ///< destroyed after all views
    std::unique_ptr<NotificationCenter> m_notificationCenter;
    NotificationManager m_notifications;
    UpdateChecker m_updateChecker;
    UserDriverDelegate m_userDriverDelegate;
    StandardUpdaterController m_updaterController;
    std::unique_ptr<LoginItem> m_loginItem;
    std::unique_ptr<DesktopSettings> m_desktopSettings;
    std::unique_ptr<DesktopAppearance> m_desktopAppearance;
    ThemeController m_theme;
    std::unique_ptr<WindowChrome> m_windowChrome; ///< may be null
    std::unique_ptr<BarExtension> m_barExtension; ///< may be null
    Ledger m_ledger{Ledger::userFolder()};
    AppState m_appState;
    LimitsWatch m_limitsWatch;
    std::unique_ptr<SleepMonitor> m_sleepMonitor;
    SettingsWindowController m_settingsWindow;
    std::optional<StatusBarController> m_statusBarController;
    std::optional<MainWindowView> m_mainWindow;
};

} // namespace burnwick
