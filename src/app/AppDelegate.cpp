// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "app/AppDelegate.h"

#include "platform/Platform.h"

#include <QDir>

namespace burnwick {

namespace {

AppState::Services services(PreferencesManager &preferences, const Clock &clock, Scheduler &scheduler) {
    const Calendar calendar = Calendar::current();
    const std::filesystem::path home = QDir::homePath().toStdString();
    return {preferences, JSONLParser(home, calendar, clock), calendar, clock,
            scheduler,   platform::openDirectoryEventSource};
}

} // namespace

AppDelegate::AppDelegate()
    : m_defaults(UserDefaults::defaultPath())
    , m_preferences(m_defaults)
    , m_appState(services(m_preferences, m_clock, m_scheduler)) {}

void AppDelegate::launch() {
    m_statusBarController.emplace(m_appState, platform::makeStatusItem());
    m_appState.start();
    // The first load is done: the window's first picture has the figures.
    m_mainWindow.emplace(m_appState);
    m_mainWindow->setWindowTitle(mainWindowTitle());
    m_mainWindow->show();
}

void AppDelegate::terminate() {
    m_appState.stop();
}

} // namespace burnwick
