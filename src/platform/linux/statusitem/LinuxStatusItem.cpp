// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/LinuxStatusItem.h"

#include "platform/Platform.h"
#include "platform/linux/statusitem/StatusItemLog.h"

#include <QtWidgets/QSystemTrayIcon>

#include <utility>

namespace burnwick {

void LinuxStatusItem::setActivateHandler(ActivateHandler handler) {
    m_activateHandler = std::move(handler);
}

void LinuxStatusItem::show(const StatusItemContent &content) {
    if (m_content == content)
        return;
    m_content = content;
    if (!m_service) {
        appear();
        return;
    }
    m_service->setContent(content);
    if (m_tray)
        m_tray->setContent(content);
}

void LinuxStatusItem::appear() {
    m_service = std::make_unique<StatusNotifierService>(
        *m_content, [this](const std::string &activationToken) { activate(activationToken); });
    connect(m_service.get(), &StatusNotifierService::hostAppeared, this, &LinuxStatusItem::hideFromTray);
    connect(m_service.get(), &StatusNotifierService::hostAbsent, this, &LinuxStatusItem::showInTray);
    if (!m_service->isConnected())
        showInTray();
}

void LinuxStatusItem::showInTray() {
    if (m_service->isConnected() && !m_absenceTold && !QSystemTrayIcon::isSystemTrayAvailable()) {
        m_absenceTold = true;
        qCInfo(statusItemLog, "there is no status area now; the item appears once there is one");
    }
    if (!m_tray && XEmbedTray::isPossible())
        m_tray = std::make_unique<XEmbedTray>(*m_content, [this] { activate({}); });
}

void LinuxStatusItem::hideFromTray() {
    m_tray.reset();
}

void LinuxStatusItem::activate(const std::string &activationToken) const {
    // A copy, for a handler that replaces itself.
    if (const ActivateHandler handler = m_activateHandler)
        handler(activationToken);
}

std::unique_ptr<StatusItem> platform::makeStatusItem() {
    return std::make_unique<LinuxStatusItem>();
}

} // namespace burnwick
