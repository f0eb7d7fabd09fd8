// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/PointableChart.h"

#include "ui/controls/AccessibleRole.h"

#include <QMouseEvent>
#include <QToolTip>

namespace burnwick {

PointableChart::PointableChart() {
    setMouseTracking(true);
    setAccessibleRole(*this, QAccessible::Chart);
}

void PointableChart::partsChanged() {
    m_pointed = m_pointer ? partAt(*m_pointer) : std::nullopt;
    update();
    if (m_pointed && QToolTip::isVisible())
        showToolTip();
}

void PointableChart::changeEvent(QEvent *event) {
    if (event->type() == QEvent::FontChange)
        layOut();
    QWidget::changeEvent(event);
}

void PointableChart::mouseMoveEvent(QMouseEvent *event) {
    m_pointer = event->position();
    const auto pointed = partAt(*m_pointer);
    if (pointed == m_pointed)
        return;
    if (m_pointed)
        update(zoneOf(*m_pointed));
    m_pointed = pointed;
    if (!m_pointed) {
        QToolTip::hideText();
        return;
    }
    update(zoneOf(*m_pointed));
    showToolTip(); // without Qt's delay, for comparing days
}

void PointableChart::leaveEvent(QEvent *) {
    m_pointer.reset();
    if (m_pointed)
        update(zoneOf(*m_pointed));
    m_pointed.reset();
}

void PointableChart::showToolTip() {
    QToolTip::showText(mapToGlobal(*m_pointer).toPoint(), tipOf(*m_pointed), this, zoneOf(*m_pointed));
}

} // namespace burnwick
