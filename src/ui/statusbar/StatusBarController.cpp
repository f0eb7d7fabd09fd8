// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/statusbar/StatusBarController.h"

#include "display/DisplayFormat.h"
#include "display/LimitText.h"
#include "model/Clock.h"
#include "state/AppState.h"

#include <utility>

namespace burnwick {

namespace {

/// Returns the lines below the bars of the limits: the gravest forecast and the age of old figures.
std::vector<std::string> remarksOf(const Snapshot &snapshot, const std::vector<LimitRow> &limits) {
    const OAuthStatus link = snapshot.account.oauthStatus;
    std::vector<std::string> remarks;
    if (!limits.empty())
        remarks.push_back(gravestSentence(limits));
    else if (link == OAuthStatus::disconnected || link == OAuthStatus::expired)
        remarks.emplace_back("Not connected");
    if (std::string stale = staleQuotaText(snapshot.account, snapshot.usage.calendar); !stale.empty())
        remarks.push_back(std::move(stale));
    return remarks;
}

} // namespace

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
    content.notes = limitLines(snapshot, m_clock.now());
    content.summary = tokenCountText(snapshot.usage.sessionTokens.total()) + " tokens · " +
                      costText(snapshot.usage.sessionCost);
    content.limits = limitRows(snapshot, m_clock.now());
    content.remarks = remarksOf(snapshot, content.limits);
    m_statusItem->show(content);
}

} // namespace burnwick
