// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick {

/// The desktop's own settings. Main thread only.
class DesktopSettings {
public:
    virtual ~DesktopSettings() = default;

    /// Opens the page on which the user decides who may notify, or the nearest that there is. Nothing happens
    /// where there is none, but a line in the log the first time.
    virtual void openNotifications() = 0;
};

} // namespace burnwick
