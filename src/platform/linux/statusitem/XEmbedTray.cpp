// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/statusitem/XEmbedTray.h"

#include "platform/linux/statusitem/StatusItemPainting.h"
#include "platform/linux/statusitem/StatusItemToolTip.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>

#include <utility>

namespace burnwick {

namespace {

QIcon iconFor(const StatusItemContent &content) {
    const QString text = compactQuotaText(content.fiveHourUsagePct);
    QIcon icon;
    for (const int size : statusIconSizes)
        icon.addPixmap(QPixmap::fromImage(paintSquareIcon(content.indicator, text, size)));
    return icon;
}

} // namespace

bool XEmbedTray::isPossible() {
    return QGuiApplication::platformName() == QLatin1String("xcb");
}

XEmbedTray::XEmbedTray(const StatusItemContent &content, std::function<void()> clicked) {
    QObject::connect(&m_icon, &QSystemTrayIcon::activated, &m_icon,
                     [clicked = std::move(clicked)](QSystemTrayIcon::ActivationReason reason) {
                         // The second click of a double click follows a first one that was told already.
                         if (reason != QSystemTrayIcon::DoubleClick)
                             clicked();
                     });
    setContent(content);
    m_icon.show();
}

void XEmbedTray::setContent(const StatusItemContent &content) {
    m_icon.setIcon(iconFor(content));
    m_icon.setToolTip(toolTipBody(content, TrayHost::Markup::qtText));
}

} // namespace burnwick
