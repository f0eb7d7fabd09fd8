// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/statusbar/StatusBarController.h"

#include "display/DisplayFormat.h"
#include "display/LimitText.h"
#include "display/PriceText.h"
#include "model/Clock.h"
#include "state/AppState.h"

#include <utility>

namespace burnwick {

StatusBarController::StatusBarController(const AppState &appState, const Clock &clock,
                                         std::unique_ptr<StatusItem> statusItem,
                                         StatusItem::ActivateHandler openMainWindow)
    : m_appState(appState)
    , m_clock(clock)
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
    content.summary = tokenCountText(snapshot.usage.sessionTokens.total()) + " tokens · " +
                      priceText(shownCost(snapshot.usage));
    content.limits = limitRows(snapshot, m_clock.now());
    content.remarks = limitRemarks(snapshot, content.limits);
    m_statusItem->show(content);
}

} // namespace burnwick
