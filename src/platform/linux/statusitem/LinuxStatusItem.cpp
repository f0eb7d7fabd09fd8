// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/LinuxStatusItem.h"

#include "platform/Platform.h"
#include "platform/linux/statusitem/NotifierState.h"
#include "platform/linux/statusitem/StatusItemPainting.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>

#include <utility>

namespace burnwick {

void LinuxStatusItem::setActivateHandler(ActivateHandler handler) {
    m_activateHandler = std::move(handler);
}

void LinuxStatusItem::show(const StatusItemContent &content) {
    if (m_content == content)
        return;
    m_content = content;
    if (!m_service)
        return appear();
    m_service->setContent(content);
    if (m_tray)
        updateTray();
}

void LinuxStatusItem::appear() {
    m_service = std::make_unique<StatusNotifierService>(
        *m_content, [this](const std::string &activationToken) { activate(activationToken); });
    connect(m_service.get(), &StatusNotifierService::hostAppeared, this, [this] { m_tray.reset(); });
    connect(m_service.get(), &StatusNotifierService::hostAbsent, this, &LinuxStatusItem::showInTray);
    if (!m_service->isConnected())
        showInTray();
}

void LinuxStatusItem::showInTray() {
    if (m_service->isConnected() && !m_absenceLogged && !QSystemTrayIcon::isSystemTrayAvailable()) {
        m_absenceLogged = true;
        qCInfo(statusItemLog, "there is no status area now; the item appears once there is one");
    }
    if (m_tray || QGuiApplication::platformName() != QLatin1String("xcb"))
        return;
    m_tray = std::make_unique<QSystemTrayIcon>();
    connect(m_tray.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                // The second click of a double click follows a first one that was announced already.
                if (reason != QSystemTrayIcon::DoubleClick)
                    activate({});
            });
    updateTray();
    m_tray->show();
}

void LinuxStatusItem::updateTray() const {
    const QString text = compactQuotaText(m_content->fiveHourUsagePct);
    QIcon icon;
    for (const int size : statusIconSizes)
        icon.addPixmap(QPixmap::fromImage(paintSquareIcon(m_content->indicator, text, size)));
    m_tray->setIcon(icon);
    m_tray->setToolTip(toolTipBody(*m_content, TrayHost::Markup::qtText));
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
