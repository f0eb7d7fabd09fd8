// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/FocusRing.h"

#include "ui/theme/ThemeColors.h"

#include <QApplication>
#include <QPainter>

namespace burnwick {

namespace {

constexpr int ringWidth = 2;
constexpr int ringDistance = 2;
constexpr int ringMargin = ringWidth + ringDistance;

} // namespace

FocusRing::FocusRing(QWidget *window)
    : QWidget(window) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
    connect(qApp, &QApplication::focusChanged, this,
            [this](QWidget *, QWidget *focused) { follow(focused); });
}

void FocusRing::follow(QWidget *focused) {
    QWidget *window = parentWidget();
    const auto watchAncestors = [this, window](QWidget *from, bool on) {
        for (QWidget *widget = from; widget != nullptr && widget != window; widget = widget->parentWidget())
            on ? widget->installEventFilter(this) : widget->removeEventFilter(this);
    };
    watchAncestors(m_control, false);
    // Qt never resets the attribute by itself.
    if (QGuiApplication::mouseButtons() != Qt::NoButton)
        window->setAttribute(Qt::WA_KeyboardFocusChange, false);
    const bool byKeyboard = focused != nullptr && focused != window && window->isAncestorOf(focused) &&
                            window->testAttribute(Qt::WA_KeyboardFocusChange);
    m_control = byKeyboard ? focused : nullptr;
    watchAncestors(m_control, true);
    place();
}

void FocusRing::place() {
    // Hidden with a control that a scroll area clips, because the ring lies over the whole window.
    setVisible(m_control && !m_control->visibleRegion().isEmpty());
    if (!isVisible())
        return;
    const QRect area(m_control->mapTo(parentWidget(), QPoint()), m_control->size());
    setGeometry(area.adjusted(-ringMargin, -ringMargin, ringMargin, ringMargin));
    raise();
}

bool FocusRing::eventFilter(QObject *, QEvent *event) {
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
    case QEvent::Hide:
        place();
        break;
    default:
        break;
    }
    return false;
}

void FocusRing::paintEvent(QPaintEvent *) {
    const QVariant corners = m_control ? m_control->property("radius") : QVariant();
    const int radius = (corners.isValid() ? corners.toInt() : 4) + ringDistance + ringWidth / 2;
    constexpr double half = ringWidth / 2.0;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(colorsFor(*this).accent, ringWidth));
    painter.drawRoundedRect(QRectF(rect()).adjusted(half, half, -half, -half), radius, radius);
}

} // namespace burnwick
