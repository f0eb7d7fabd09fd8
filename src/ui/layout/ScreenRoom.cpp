// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/layout/ScreenRoom.h"

#include <QEvent>
#include <QScreen>
#include <QWidget>
#include <QWindow>

namespace burnwick {

QRect roomOn(const QScreen &screen) {
    // An estimate: the window manager's frame has a known size only after the window is shown.
    constexpr QSize frame{8, 40};
    const QRect available = screen.availableGeometry();
    return {available.topLeft() + QPoint(frame.width() / 2, frame.height()), available.size() - frame};
}

ScreenRoom::ScreenRoom(QWidget *widget)
    : QObject(widget)
    , m_widget(widget) {
    widget->installEventFilter(this);
}

QSize ScreenRoom::size() const {
    return roomOn(*m_widget->screen()).size();
}

bool ScreenRoom::eventFilter(QObject *watched, QEvent *event) {
    if (watched == m_widget && event->type() == QEvent::Show) {
        connect(m_widget->window()->windowHandle(), &QWindow::screenChanged, this, &ScreenRoom::follow,
                Qt::UniqueConnection);
        follow(m_widget->screen());
    }
    return QObject::eventFilter(watched, event);
}

void ScreenRoom::follow(QScreen *screen) {
    if (m_screen == screen)
        return;
    if (m_screen)
        disconnect(m_screen, nullptr, this, nullptr);
    m_screen = screen;
    if (m_screen)
        connect(m_screen, &QScreen::availableGeometryChanged, this, &ScreenRoom::changed);
    Q_EMIT changed();
}

} // namespace burnwick
