// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "platform/Platform.h"
#include "ui/WindowActivation.h"

#include <QDesktopServices>
#include <QDir>
#include <QIcon>

namespace burnwick {

namespace {

std::filesystem::path homeDirectory() {
    return QDir::homePath().toStdString();
}

} // namespace

AppDelegate::AppDelegate()
    : m_calendar(Calendar::current())
    , m_defaults(UserDefaults::defaultPath())
    , m_preferences(m_defaults)
    , m_endpoints(Endpoints::load(m_defaults))
    , m_secretStore(platform::makeSecretStore(homeDirectory()))
    , m_terminal(platform::makeTerminalLauncher())
    , m_account(m_endpoints, *m_secretStore, m_clock, m_calendar)
    , m_appState(services()) {}

AppState::Services AppDelegate::services() {
    return {m_preferences,
            JSONLParser(homeDirectory(), m_calendar, m_clock),
            m_calendar,
            m_clock,
            m_scheduler,
            platform::openDirectoryEventSource,
            m_account.keychain,
            m_account.oauthFetcher,
            m_account.statusFetcher,
            *m_terminal,
            [this] { QDesktopServices::openUrl(m_endpoints.loginURL); },
            m_alerts};
}

void AppDelegate::launch(const ApplicationRequest &start) {
    m_statusBarController.emplace(m_appState, platform::makeStatusItem());
    m_appState.start();
    // The first load is done: the window's first picture has the figures.
    m_mainWindow.emplace(m_appState);
    m_mainWindow->setWindowTitle(mainWindowTitle());
    m_mainWindow->setWindowIcon(QIcon(QStringLiteral(":/burnwick/icons/burnwick.svg")));
    perform(start);
}

void AppDelegate::perform(const ApplicationRequest &request) {
    bringToFront(*m_mainWindow, request.activation.token);
}

void AppDelegate::terminate() {
    constexpr std::chrono::milliseconds patience{400};
    m_appState.stop();
    m_account.oauthFetcher.finishRenewals(patience);
}

} // namespace burnwick
