// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/statusitem/NotifierState.h"
#include "platform/linux/statusitem/StatusItemPainting.h"
#include "platform/linux/statusitem/StatusNotifierService.h"
#include "platform/linux/statusitem/StatusTitleService.h"

#include <QtGui/QGuiApplication>
#include <QtGui/QIcon>
#include <QtGui/QPixmap>
#include <QtWidgets/QSystemTrayIcon>

#include <memory>
#include <optional>
#include <utility>

namespace burnwick {

namespace {

/// The status item of Linux desktops: drawn by an extension of the shell, or else on the session bus while a
/// watcher runs, or else in the X11 tray.
class LinuxStatusItem final : public QObject, public StatusItem {
public:
    void setActivateHandler(ActivateHandler handler) override { m_activateHandler = std::move(handler); }
    void show(const StatusItemContent &content) override {
        if (m_content == content)
            return;
        m_content = content;
        if (!m_title)
            return appear();
        m_title->setContent(content);
        if (m_service)
            m_service->setContent(content);
        if (m_tray)
            updateTray();
    }

private:
    void appear() {
        m_title = std::make_unique<StatusTitleService>(
            *m_content, [this](const std::string &activationToken) { activate(activationToken); });
        connect(m_title.get(), &StatusTitleService::drawnChanged, this, [this](bool isDrawn) {
            if (isDrawn)
                withdrawItem();
            else
                offerItem();
        });
        if (!m_title->isConnected())
            offerItem();
    }

    /// A second item beside the shell's own would repeat it.
    void withdrawItem() {
        qCInfo(statusItemLog, "the shell's extension shows the title; there is no other item");
        m_service.reset();
        m_tray.reset();
    }

    void offerItem() {
        m_service = std::make_unique<StatusNotifierService>(
            *m_content, [this](const std::string &activationToken) { activate(activationToken); });
        connect(m_service.get(), &StatusNotifierService::hostAppeared, this, [this] { m_tray.reset(); });
        connect(m_service.get(), &StatusNotifierService::hostAbsent, this, &LinuxStatusItem::showInTray);
        if (!m_service->isConnected())
            showInTray();
    }

    void showInTray() {
        if (m_service->isConnected() && !m_absenceLogged && !QSystemTrayIcon::isSystemTrayAvailable()) {
            m_absenceLogged = true;
            qCInfo(statusItemLog, "there is no status area now; the item appears once there is one");
        }
        if (m_tray || QGuiApplication::platformName() != QLatin1String("xcb"))
            return;
        m_tray = std::make_unique<QSystemTrayIcon>();
        connect(m_tray.get(), &QSystemTrayIcon::activated, this,
                [this](QSystemTrayIcon::ActivationReason reason) {
                    // The first click of a double click was announced already.
                    if (reason != QSystemTrayIcon::DoubleClick)
                        activate({});
                });
        updateTray();
        m_tray->show();
    }

    void updateTray() const {
        const QString text = compactQuotaText(m_content->fiveHourUsagePct);
        QIcon icon;
        for (const int size : statusIconSizes)
            icon.addPixmap(QPixmap::fromImage(paintSquareIcon(m_content->indicator, text, size)));
        m_tray->setIcon(icon);
        m_tray->setToolTip(toolTipBody(*m_content, TrayHost::Markup::qtText));
    }

    void activate(const std::string &activationToken) const {
        // A copy, because the handler may replace itself.
        if (const ActivateHandler handler = m_activateHandler)
            handler(activationToken);
    }

    ActivateHandler m_activateHandler;
    std::optional<StatusItemContent> m_content;
    std::unique_ptr<StatusTitleService> m_title;      ///< null before the first content
    std::unique_ptr<StatusNotifierService> m_service; ///< null while an extension draws the title
    /// Null while a watcher runs, with which Qt would register it.
    std::unique_ptr<QSystemTrayIcon> m_tray;
    bool m_absenceLogged = false;
};

} // namespace

std::unique_ptr<StatusItem> platform::makeStatusItem() {
    return std::make_unique<LinuxStatusItem>();
}

} // namespace burnwick
