// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "ui/StateSubscription.h"

#include <QString>

#include <memory>
#include <optional>

namespace burnwick {

class AppState;

/// The title of the dashboard's window, by which it is found.
[[nodiscard]] QString mainWindowTitle();

/// Keeps the status item's content current and opens the dashboard on a click. Main thread only.
class StatusBarController final {
public:
    /// The state must outlive this object. Shows the item at once.
    StatusBarController(const AppState &appState, std::unique_ptr<StatusItem> statusItem);

    /// Brings the window titled "Burnwick" to the front; does nothing when there is none.
    static void openMainWindow(const std::string &activationToken = {});

private:
    void update();

    const AppState &m_appState;
    std::unique_ptr<StatusItem> m_statusItem;
    std::optional<StatusItemContent> m_shown;
    StateSubscription m_subscription;
};

} // namespace burnwick
