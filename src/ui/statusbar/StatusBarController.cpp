// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/statusbar/StatusBarController.h"

#include "state/AppState.h"
#include "ui/WindowActivation.h"

#include <QApplication>
#include <QWidget>

#include <algorithm>

namespace burnwick {

QString mainWindowTitle() {
    return QStringLiteral("Burnwick");
}

StatusBarController::StatusBarController(const AppState &appState, std::unique_ptr<StatusItem> statusItem)
    : m_appState(appState)
    , m_statusItem(std::move(statusItem))
    , m_subscription(appState, [this] { update(); }) {
    m_statusItem->setActivateHandler(&StatusBarController::openMainWindow);
    update();
}

void StatusBarController::update() {
    StatusItemContent content;
    content.title = buildStatusTitle(m_appState.sessionTokens(), m_appState.sessionCost(),
                                     m_appState.quotaData(), m_appState.statusIndicator());
    if (const auto &quota = m_appState.quotaData())
        content.fiveHourUsagePct = quota->fiveHourUsagePct;
    content.indicator = m_appState.statusIndicator();
    if (m_shown == content)
        return;
    m_statusItem->show(content);
    m_shown = std::move(content);
}

void StatusBarController::openMainWindow(const std::string &activationToken) {
    const QWidgetList windows = QApplication::topLevelWidgets();
    const auto window = std::find_if(windows.begin(), windows.end(), [](const QWidget *candidate) {
        return candidate->windowTitle() == mainWindowTitle();
    });
    if (window != windows.end())
        bringToFront(**window, activationToken);
}

} // namespace burnwick
