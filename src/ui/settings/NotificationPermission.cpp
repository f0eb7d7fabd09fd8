// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/NotificationPermission.h"

#include "platform/DesktopSettings.h"
#include "ui/controls/Badge.h"
#include "ui/settings/SettingsCard.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPointer>

namespace burnwick {

NotificationPermission::NotificationPermission(NotificationCenter &center, DesktopSettings &desktop,
                                               QWidget *parent)
    : QWidget(parent)
    , m_center(center)
    , m_desktop(desktop)
    , m_enabled(new Badge(QStringLiteral("Enabled"), &ThemeColors::granted))
    , m_action(new FlatButton({}, settingsButtonLook())) {
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins({});
    line->addWidget(m_enabled);
    line->addWidget(m_action);
    m_enabled->hide();
    m_action->hide();
    m_action->setAccessibleDescription(QStringLiteral("Notifications"));
    connect(m_action, &QAbstractButton::clicked, this, &NotificationPermission::act);
    m_center.setAuthorizationChangedHandler([this] { read(); });
}

NotificationPermission::~NotificationPermission() {
    m_center.setAuthorizationChangedHandler(nullptr);
}

bool NotificationPermission::event(QEvent *event) {
    // The user may come back from the desktop's settings, which announce nothing.
    if (event->type() == QEvent::Show || event->type() == QEvent::WindowActivate)
        read();
    return QWidget::event(event);
}

void NotificationPermission::read() {
    if (!isVisible())
        return;
    const int number = ++m_latestRead;
    m_center.readAuthorization([self = QPointer(this), number](Authorization status) {
        if (self && self->m_latestRead == number)
            self->setStatus(status);
    });
}

void NotificationPermission::setStatus(Authorization status) {
    if (m_status == status)
        return;
    m_status = status;
    m_enabled->setVisible(status == Authorization::authorized);
    m_action->setVisible(status != Authorization::authorized);
    m_action->setText(status == Authorization::denied ? QStringLiteral("Open Settings")
                                                      : QStringLiteral("Allow"));
    m_action->updateGeometry();
    // At once: by themselves the layouts make room one after the other, and half a button is painted in
    // between.
    for (QWidget *widget = this; widget; widget = widget->parentWidget()) {
        if (QLayout *layout = widget->layout())
            layout->activate();
    }
}

void NotificationPermission::act() {
    if (m_status == Authorization::denied) {
        m_desktop.openNotifications();
        return;
    }
    m_center.requestAuthorization([self = QPointer(this)](const auto &) {
        if (self)
            self->read();
    });
}

} // namespace burnwick
