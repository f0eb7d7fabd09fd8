// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsWindowController.h"

#include "platform/WindowChrome.h"
#include "ui/WindowActivation.h"
#include "ui/controls/SvgIcon.h"
#include "ui/layout/ScreenRoom.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QWindow>

#include <algorithm>
#include <utility>

namespace burnwick {

namespace {

/// The screen with the focused window.
QScreen *currentScreen() {
    const QWindow *focused = QGuiApplication::focusWindow();
    return focused != nullptr ? focused->screen() : QGuiApplication::primaryScreen();
}

} // namespace

SettingsWindowController::SettingsWindowController(SettingsView::Services services)
    : m_services(std::move(services)) {}

SettingsWindowController::~SettingsWindowController() = default;

void SettingsWindowController::show(const std::string &activationToken) {
    const bool isNew = !m_window || !m_window->isVisible();
    if (isNew) {
        m_window.reset(); // first, because NotificationPermission allows one instance
        m_window = std::make_unique<SettingsView>(m_services);
        m_window->setWindowFlags(Qt::Window | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                                 Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
        m_window->setWindowTitle(QStringLiteral("Settings"));
        m_window->setWindowIcon(applicationIcon());
        if (const QScreen *screen = currentScreen()) {
            m_window->fitTo(*screen);
            const QRect available = screen->availableGeometry();
            const QPoint corner = available.center() - m_window->rect().center();
            // The frame's top, for a window as high as the screen's room.
            const int lowest = available.top() + roomOn(*screen).height() - m_window->height();
            m_window->move(corner.x(), std::min(corner.y(), lowest));
        }
    }
    bringToFront(*m_window, activationToken);
    if (isNew && m_services.chrome != nullptr)
        m_services.chrome->decorateSettings(m_window->winId(),
                                            [window = QPointer(m_window.get())](int height) {
                                                if (window)
                                                    leaveTopTo(height, *window);
                                            });
}

} // namespace burnwick
