// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "logs/LogFolders.h"
#include "logs/LogRetention.h"
#include "platform/Platform.h"
#include "ui/WindowActivation.h"
#include "ui/controls/SvgIcon.h"

#include <QDesktopServices>
#include <QDir>

namespace burnwick {

namespace {

std::filesystem::path homeDirectory() {
    return QDir::homePath().toStdString();
}

int untilCleanup() {
    return daysUntilCleanup(homeDirectory());
}

std::vector<ClaudeFolder> claudeFoldersOf(const PreferencesManager &preferences) {
    std::vector<std::string> chosen;
    for (const QString &folder : preferences.logFolders())
        chosen.push_back(folder.toStdString());
    return claudeFolders(homeDirectory(), chosen);
}

/// Returns Claude Code's own folders of logs that exist, with "~" for the home directory.
QStringList usualLogFolders() {
    QStringList folders;
    for (const ClaudeFolder &folder : claudeFolders(homeDirectory())) {
        const QString path = QString::fromStdString(folder.logs.string());
        const QString home = QDir::homePath() + u'/';
        if (QFileInfo(path).isDir())
            folders += path.startsWith(home) ? QStringLiteral("~/") + path.mid(home.size()) : path;
    }
    return folders;
}

QString problemOf(const QString &folder) {
    const std::error_code error = folderError(chosenFolder(homeDirectory(), folder.toStdString()).logs);
    return error ? QString::fromStdString(folderErrorText(error)) : QString();
}

void openOnDesktop(const QUrl &url) {
    QDesktopServices::openUrl(url);
}

} // namespace

AppDelegate::AppDelegate()
    : m_defaults(platform::makeUserDefaults(UserDefaults::Access::readWrite))
    , m_preferences(*m_defaults)
    , m_endpoints(Endpoints::load(*m_defaults))
    , m_secretStore(platform::makeSecretStore(
          [this] { return configurationFoldersOf(claudeFoldersOf(m_preferences)); }))
    , m_terminal(platform::makeTerminalLauncher())
    , m_account(m_endpoints, *m_secretStore, m_clock, Calendar::current())
    , m_exchangeGuard{m_account.oauthFetcher}
    , m_notificationCenter(platform::makeNotificationCenter())
    , m_notifications(*m_notificationCenter, m_preferences, *m_defaults, m_clock)
    , m_updateChecker(m_scheduler)
    , m_userDriverDelegate(
          [this] { showMainWindow({}); },
          [this](const QString &version) { m_notifications.sendUpdateAvailable(version.toStdString()); })
    , m_updaterController(updaterServices())
    , m_loginItem(platform::makeLoginItem())
    , m_desktopSettings(platform::makeDesktopSettings())
    , m_desktopAppearance(platform::makeDesktopAppearance())
    , m_theme(m_preferences, *m_desktopAppearance, m_scheduler)
    , m_windowChrome(platform::makeWindowChrome())
    , m_barExtension(platform::makeBarExtension())
    , m_appState(stateServices())
    , m_limitsWatch(Ledger::userFolder(), m_clock, platform::openDirectoryEventSource,
                    [this](const std::vector<Limit> &limits) { m_appState.observe(limits); })
    , m_sleepMonitor(platform::makeSleepMonitor())
    , m_settingsWindow(settingsServices()) {}

StandardUpdaterController::Services AppDelegate::updaterServices() {
    return {m_account.http,  *m_defaults,         m_clock, m_scheduler, m_endpoints.productBaseURL,
            m_updateChecker, m_userDriverDelegate};
}

AppState::Services AppDelegate::stateServices() {
    return {{m_preferences, JSONLParser(logFoldersOf(claudeFoldersOf(m_preferences))),
             [] { return Calendar::current(); }, m_clock, m_scheduler, platform::openDirectoryEventSource,
             platform::openTreeEventSource, &m_ledger,
             [this](std::span<const Limit> limits) { return m_ledger.recordLimits(limits); },
             PriceTable::ofUser()},
            {m_preferences, m_clock, m_scheduler, m_account, *m_terminal,
             [this] { openOnDesktop(m_endpoints.loginURL); }}};
}

SettingsView::Services AppDelegate::settingsServices() {
    return {m_preferences,
            *m_loginItem,
            *m_notificationCenter,
            *m_desktopSettings,
            {m_account.http, m_scheduler, m_endpoints.productBaseURL, platform::releaseForm(), openOnDesktop},
            {untilCleanup, [this]() -> const UsageFigures & { return m_appState.snapshot().usage; },
             [this](bool withLines) { return m_ledger.forgetKeptHistory(withLines); }},
            {usualLogFolders, problemOf},
            m_endpoints.feedbackURL,
            [this] { return m_theme.reducedMotion(); },
            m_windowChrome.get()};
}

void AppDelegate::launch(const ApplicationRequest &start) {
    const auto openMainWindow = [this](const std::string &token) { showMainWindow(token); };
    m_statusBarController.emplace(m_appState, m_clock, platform::makeStatusItem(), openMainWindow);
    QObject::connect(&m_appState, &AppState::refreshed, &m_appState, [this] {
        m_notifications.checkQuota(m_appState.snapshot().account);
        m_notifications.checkPace(m_appState.snapshot().usage);
    });
    m_ledger.setKeepsHistory(m_preferences.keepHistory());
    QObject::connect(&m_preferences, &PreferencesManager::keepHistoryChanged, &m_appState, [this](bool on) {
        m_ledger.setKeepsHistory(on);
        m_appState.refreshLocalData();
    });
    QObject::connect(&m_preferences, &PreferencesManager::logFoldersChanged, &m_appState,
                     [this] { m_appState.setLogFolders(logFoldersOf(claudeFoldersOf(m_preferences))); });
    m_appState.start();
    m_limitsWatch.check();
    m_sleepMonitor->follow([this] {
        m_limitsWatch.check();
        m_appState.wakeUp();
        m_scheduler.catchUp();
    });
    m_notificationCenter->setActivateHandler(openMainWindow);
    m_notifications.requestAuthorization();
    // The desktop may refuse; the preference stays unchanged.
    static_cast<void>(m_loginItem->restoreChoice(m_preferences.launchAtStartup()));
    // After the first reading of the logs, so that the window's first frame has the figures.
    m_mainWindow.emplace(MainWindowView::Services{m_appState, m_preferences, m_clock, m_scheduler,
                                                  untilCleanup, m_windowChrome.get(), openOnDesktop,
                                                  m_barExtension.get()});
    m_mainWindow->setWindowTitle(QStringLiteral("Burnwick"));
    m_mainWindow->setWindowIcon(applicationIcon());
    QObject::connect(&*m_mainWindow, &MainWindowView::settingsRequested, &*m_mainWindow,
                     [this] { m_settingsWindow.show({}); });
    const auto showWindows = [this, start] {
        if (start.action == ApplicationAction::showSettings)
            m_mainWindow->show();
        perform(start);
    };
    if (m_theme.isSettled()) {
        showWindows();
        return;
    }
    // Shown earlier, the windows could change from one theme to the other.
    QObject::connect(&m_theme, &ThemeController::settled, &*m_mainWindow, showWindows);
}

void AppDelegate::perform(const ApplicationRequest &request) {
    if (request.action == ApplicationAction::showSettings)
        m_settingsWindow.show(request.activation.token);
    else
        showMainWindow(request.activation.token);
}

void AppDelegate::showMainWindow(const std::string &activationToken) {
    if (m_mainWindow)
        bringToFront(*m_mainWindow, activationToken);
}

void AppDelegate::terminate() {
    m_appState.stop();
}

AppDelegate::ExchangeGuard::~ExchangeGuard() {
    fetcher.finishExchange(OAuthFetcher::longestExchange);
}

} // namespace burnwick
