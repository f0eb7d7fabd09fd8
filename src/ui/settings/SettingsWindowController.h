// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/settings/SettingsView.h"

#include <memory>
#include <string>

namespace burnwick {

/// Opens the settings, in one window at most. Main thread only.
class SettingsWindowController final {
public:
    explicit SettingsWindowController(SettingsView::Services services);
    ~SettingsWindowController();
    SettingsWindowController(const SettingsWindowController &) = delete;
    SettingsWindowController &operator=(const SettingsWindowController &) = delete;

    /// Brings the window to the front; a new one in the middle of the screen when there is none to be seen.
    /// The token is the desktop's permission to do so; see bringToFront().
    void show(const std::string &activationToken);

private:
    SettingsView::Services m_services;
    std::unique_ptr<SettingsView> m_window; ///< the latest one, which may be closed
};

} // namespace burnwick
