// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "ui/StateSubscription.h"

#include <memory>

namespace burnwick {

class AppState;
class Clock;

/// Keeps the status item's content current and opens the dashboard on a click. Main thread only.
class StatusBarController final {
public:
    /// State and clock must outlive this object. Shows the item at once; a click on it calls
    /// `openMainWindow`.
    StatusBarController(const AppState &appState, const Clock &clock, std::unique_ptr<StatusItem> statusItem,
                        StatusItem::ActivateHandler openMainWindow);

private:
    void update();

    const AppState &m_appState;
    const Clock &m_clock;
    std::unique_ptr<StatusItem> m_statusItem;
    StateSubscription m_subscription;
};

} // namespace burnwick
