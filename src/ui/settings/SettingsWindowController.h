// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "ui/settings/SettingsView.h"

#include <memory>
#include <string>

namespace burnwick {

/// Opens the settings in at most one window. Main thread only.
class SettingsWindowController final {
public:
    explicit SettingsWindowController(SettingsView::Services services);
    ~SettingsWindowController();
    SettingsWindowController(const SettingsWindowController &) = delete;
    SettingsWindowController &operator=(const SettingsWindowController &) = delete;

    /// Brings the visible window to the front, or opens a new one in the middle of the screen. For the token
    /// see bringToFront().
    void show(const std::string &activationToken);

private:
    SettingsView::Services m_services;
    std::unique_ptr<SettingsView> m_window; ///< the latest; may be closed
};

} // namespace burnwick
