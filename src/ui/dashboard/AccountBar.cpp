// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/AccountBar.h"

#include "ui/controls/MenuButton.h"
#include "ui/dashboard/StatusPill.h"
#include "ui/text/TextLabel.h"

#include <QActionGroup>
#include <QHBoxLayout>
#include <QMenu>
#include <QPainter>

namespace burnwick {

namespace {

struct StatusLook {
    const char *pill;
    QColor ThemeColors::*color;
    QColor ThemeColors::*textColor;
    const char *action; ///< null while a login runs
    bool logsIn;        ///< otherwise the action requests the quota
    double groundOpacity = 0.16;
};

StatusLook lookOf(OAuthStatus status) {
    using T = ThemeColors;
    switch (status) {
    case OAuthStatus::connected:
        return {"Connected", &T::operational, &T::operationalText, "Reconnect", false};
    case OAuthStatus::disconnected:
        return {"Disconnected", &T::outage, &T::outageText, "Re-authenticate", true};
    case OAuthStatus::expired:
        return {"Token Expired", &T::outage, &T::outageText, "Re-authenticate", true};
    case OAuthStatus::authenticating:
        return {"Authenticating…", &T::degraded, &T::degradedText, nullptr, false};
    case OAuthStatus::unknown:
        break;
    }
    return {"Unknown", &T::secondary, &T::unknownText, "Retry", false, 0.12};
}

FlatButton::Look smallButtonLook() {
    return {.text = TextStyle::caption,
            .padding = {8, 4},
            .ground = &ThemeColors::hover,
            .hovered = &ThemeColors::selected,
            .pressed = &ThemeColors::pressed};
}

/// An open circle without animation.
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

/// The entries of other providers have no effect.
QPushButton *makeProviderMenu() {
    const FlatButton::Look look{.text = TextStyle::body,
                                .padding = {9, 3},
                                .hovered = &ThemeColors::hover,
                                .pressed = &ThemeColors::pressed,
                                .outline = &ThemeColors::line};
    auto *menu = new QMenu;
    menu->setFont(fontOf(TextStyle::body));
    QAction *claude = menu->addAction(QStringLiteral("Claude"));
    claude->setCheckable(true);
    claude->setChecked(true);
    claude->setActionGroup(new QActionGroup(claude)); // so that a click leaves it checked
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

AccountBar::AccountBar()
    : m_pill(new StatusPill)
    , m_action(new FlatButton({}, smallButtonLook()))
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
    m_pill->setState(QString::fromUtf8(look.pill), look.color, look.textColor, look.groundOpacity);
    m_action->setText(QString::fromUtf8(look.action));
    m_action->updateGeometry();
    m_action->setVisible(look.action != nullptr);
    m_waiting->setVisible(look.action == nullptr);
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
    fillRounded(painter, rect(), radius, colorsFor(*this).bar);
}

} // namespace burnwick
