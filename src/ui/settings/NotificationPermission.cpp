// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/NotificationPermission.h"

#include "platform/DesktopSettings.h"
#include "ui/controls/AccessibleRole.h"
#include "ui/settings/SettingsCard.h"

#include <QEvent>
#include <QHBoxLayout>
#include <QPainter>
#include <QPointer>

namespace burnwick {

namespace {

/// Text on a tint of its colour; not interactive.
class EnabledBadge final : public QWidget {
public:
    EnabledBadge() {
        setFont(fontOf(TextStyle::captionStrong));
        setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        setAccessibleRole(*this, QAccessible::StaticText);
        setAccessibleName(m_text);
    }
    [[nodiscard]] QSize sizeHint() const override {
        constexpr QSize padding(9, 3);
        return fontMetrics().size(Qt::TextSingleLine, m_text) + 2 * padding;
    }

protected:
    void paintEvent(QPaintEvent *) override {
        constexpr double radius = 6;
        const QColor color = colorsFor(*this).granted;
        QPainter painter(this);
        fillRounded(painter, rect(), radius, withOpacity(color, badgeOpacity));
        painter.setPen(color);
        painter.drawText(rect(), Qt::AlignCenter | Qt::TextSingleLine, m_text);
    }

private:
    const QString m_text = QStringLiteral("Enabled");
};

} // namespace

NotificationPermission::NotificationPermission(NotificationCenter &center, DesktopSettings &desktop)
    : m_center(center)
    , m_desktop(desktop)
    , m_enabled(new EnabledBadge)
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
    // The desktop's settings may have changed it without an announcement.
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
    // At once, because Qt would update the layouts one by one and paint half a button in between.
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
