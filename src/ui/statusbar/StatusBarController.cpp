// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/statusbar/StatusBarController.h"

#include "state/AppState.h"

#include <utility>

namespace burnwick {

StatusBarController::StatusBarController(const AppState &appState, std::unique_ptr<StatusItem> statusItem,
                                         StatusItem::ActivateHandler openMainWindow)
    : m_appState(appState)
    , m_statusItem(std::move(statusItem))
    , m_subscription(appState, [this] { update(); }) {
    m_statusItem->setActivateHandler(std::move(openMainWindow));
    update();
}

void StatusBarController::update() {
    const Snapshot &snapshot = m_appState.snapshot();
    StatusItemContent content;
    content.title = buildStatusTitle(snapshot);
    if (const auto &quota = snapshot.account.quotaData)
        content.fiveHourUsagePct = quota->fiveHourUsagePct;
    content.indicator = snapshot.account.statusIndicator();
    m_statusItem->show(content);
}

} // namespace burnwick
