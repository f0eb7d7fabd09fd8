// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/statusitem/StatusNotifierService.h"

#include <QtCore/QObject>
#include <QtWidgets/QSystemTrayIcon>

#include <memory>
#include <optional>

namespace burnwick {

/// The status item of Linux desktops: on the session bus where a watcher runs, in the X11 tray elsewhere.
class LinuxStatusItem final : public QObject, public StatusItem {
    Q_OBJECT

public:
    void setActivateHandler(ActivateHandler handler) override;
    void show(const StatusItemContent &content) override;

private:
    void appear();
    void showInTray();
    void updateTray() const;
    void activate(const std::string &activationToken) const;

    ActivateHandler m_activateHandler;
    std::optional<StatusItemContent> m_content;
    std::unique_ptr<StatusNotifierService> m_service;
    /// Exists only while there is no watcher, with which Qt would register it otherwise.
    std::unique_ptr<QSystemTrayIcon> m_tray;
    bool m_absenceLogged = false;
};

} // namespace burnwick
