// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"

#include <QtWidgets/QSystemTrayIcon>

#include <functional>

namespace burnwick {

/// The item in an X11 system tray, for desktops without a status notifier watcher. It appears as soon as
/// there is a tray. Create it only while there is no watcher: Qt would put its icon there otherwise.
class XEmbedTray {
public:
    /// Whether this display can have such trays at all.
    [[nodiscard]] static bool isPossible();

    /// The handler is called for a click with any button.
    XEmbedTray(const StatusItemContent &content, std::function<void()> clicked);

    void setContent(const StatusItemContent &content);

private:
    QSystemTrayIcon m_icon;
};

} // namespace burnwick
