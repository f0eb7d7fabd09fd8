// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/AccountBar.h"

#include "ui/controls/MenuButton.h"
#include "ui/dashboard/DashboardButtons.h"
#include "ui/dashboard/StatusPill.h"
#include "ui/text/TextLabel.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>

namespace burnwick {

namespace {

struct StatusLook {
    QString pill;
    QColor ThemeColors::*color;
    QColor ThemeColors::*textColor;
    double groundOpacity;
    QString action; ///< none while a login runs
    bool logsIn;    ///< the action does; otherwise it asks for the quota
};

StatusLook lookOf(OAuthStatus status) {
    const QString logIn = QStringLiteral("Re-authenticate");
    switch (status) {
    case OAuthStatus::connected:
        return {QStringLiteral("Connected"),   &ThemeColors::operational,
                &ThemeColors::operationalText, 0.16,
                QStringLiteral("Reconnect"),   false};
    case OAuthStatus::disconnected:
        return {QStringLiteral("Disconnected"),
                &ThemeColors::outage,
                &ThemeColors::outageText,
                0.16,
                logIn,
                true};
    case OAuthStatus::expired:
        return {QStringLiteral("Token Expired"),
                &ThemeColors::outage,
                &ThemeColors::outageText,
                0.16,
                logIn,
                true};
    case OAuthStatus::authenticating:
        return {QString::fromUtf8("Authenticating…"),
                &ThemeColors::degraded,
                &ThemeColors::degradedText,
                0.16,
                {},
                false};
    case OAuthStatus::unknown:
        break;
    }
    return {QStringLiteral("Unknown"), &ThemeColors::secondary,
            &ThemeColors::unknownText, 0.12,
            QStringLiteral("Retry"),   false};
}

/// An open circle: something is going on elsewhere. It does not move.
class ProgressRing final : public QWidget {
public:
    ProgressRing() { setFixedSize(12, 12); }

protected:
    void paintEvent(QPaintEvent *) override {
        constexpr int sixteenths = 16;
        QPainter painter(this);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(colorsFor(*this).secondary, 1.5, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(QRectF(rect()).adjusted(1, 1, -1, -1), 90 * sixteenths, -270 * sixteenths);
    }
};

/// Only Claude's account is served; the others stand for what may come.
QPushButton *makeProviderMenu() {
    FlatButton::Look look = smallButtonStyle();
    look.text = TextStyle::body;
    look.padding = {9, 3};
    look.ground = nullptr;
    look.hovered = &ThemeColors::hover;
    look.outline = &ThemeColors::line;
    auto *menu = new QMenu;
    menu->setFont(fontOf(TextStyle::body));
    QAction *claude = menu->addAction(QStringLiteral("Claude"));
    claude->setCheckable(true);
    claude->setChecked(true);
    claude->setActionGroup(new QActionGroup(claude)); // a click does not take the mark away
    menu->addSeparator();
    menu->addAction(QStringLiteral("OpenAI"));
    menu->addAction(QStringLiteral("Grok"));
    auto *button = new MenuButton(QStringLiteral("Claude"), look, menu);
    button->setAccessibleName(QStringLiteral("Model: Claude"));
    return button;
}

QWidget *makeWaiting() {
    auto *waiting = new QWidget;
    auto *line = new QHBoxLayout(waiting);
    line->setContentsMargins({});
    line->setSpacing(6);
    line->addWidget(new ProgressRing);
    line->addWidget(new TextLabel(QString::fromUtf8("Waiting for browser…"), TextStyle::caption,
                                  QPalette::PlaceholderText));
    return waiting;
}

} // namespace

AccountBar::AccountBar(QWidget *parent)
    : QWidget(parent)
    , m_pill(new StatusPill)
    , m_action(new FlatButton({}, smallButtonStyle()))
    , m_waiting(makeWaiting()) {
    constexpr int height = 36;
    setFixedHeight(height);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(16, 0, 16, 0);
    line->setSpacing(8);
    line->addWidget(new TextLabel(QStringLiteral("Model"), TextStyle::caption, QPalette::PlaceholderText));
    line->addWidget(makeProviderMenu());
    line->addStretch();
    line->addWidget(
        new TextLabel(QStringLiteral("OAuth token status"), TextStyle::caption, QPalette::PlaceholderText));
    line->addWidget(m_pill);
    line->addWidget(m_action);
    line->addWidget(m_waiting);
    connect(m_action, &QPushButton::clicked, this, &AccountBar::act);
    setStatus(OAuthStatus::unknown);
}

void AccountBar::setStatus(OAuthStatus status) {
    if (m_status == status)
        return;
    m_status = status;
    const StatusLook look = lookOf(status);
    m_pill->setState(look.pill, look.color, look.textColor, look.groundOpacity);
    m_action->setText(look.action);
    m_action->updateGeometry();
    m_action->setVisible(!look.action.isEmpty());
    m_waiting->setVisible(look.action.isEmpty());
}

void AccountBar::act() {
    if (lookOf(*m_status).logsIn)
        Q_EMIT loginRequested();
    else
        Q_EMIT refreshRequested();
}

void AccountBar::paintEvent(QPaintEvent *) {
    constexpr double radius = 10;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorsFor(*this).bar);
    painter.drawRoundedRect(rect(), radius, radius);
}

} // namespace burnwick
