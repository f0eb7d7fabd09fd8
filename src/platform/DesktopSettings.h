// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick {

/// The desktop's settings. Main thread only.
class DesktopSettings {
public:
    virtual ~DesktopSettings() = default;

    /// Opens the page for notifications, or the nearest installed one. When none is installed, the first call
    /// logs a line.
    virtual void openNotifications() = 0;
};

} // namespace burnwick
