// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/StatusItem.h"
#include "platform/linux/statusitem/StatusNotifierService.h"
#include "platform/linux/statusitem/XEmbedTray.h"

#include <QtCore/QObject>

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
    void hideFromTray();
    void activate(const std::string &activationToken) const;

    ActivateHandler m_activateHandler;
    std::optional<StatusItemContent> m_content;
    std::unique_ptr<StatusNotifierService> m_service;
    std::unique_ptr<XEmbedTray> m_tray;
    bool m_absenceTold = false;
};

} // namespace burnwick
