// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/charts/PointableChart.h"

#include "ui/controls/AccessibleRole.h"

#include <QMouseEvent>
#include <QToolTip>

#include <utility>

namespace burnwick {

PointableChart::PointableChart() {
    setMouseTracking(true);
    setAccessibleRole(*this, QAccessible::Chart);
}

void PointableChart::partsChanged() {
    if (m_pointer)
        m_pointed = partAt(*m_pointer);
    else if (m_pointed)
        m_pointed = partAt(zoneOf(*m_pointed).center());
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
    if (highlight(partAt(*m_pointer)))
        showToolTip(); // without Qt's delay, for comparing days
}

void PointableChart::leaveEvent(QEvent *) {
    m_pointer.reset();
    highlight(std::nullopt);
}

void PointableChart::point(std::optional<std::size_t> part) {
    m_pointer.reset();
    if (highlight(part))
        showToolTip();
}

/// Returns whether another part is highlighted.
bool PointableChart::highlight(std::optional<std::size_t> part) {
    if (part == m_pointed)
        return false;
    for (const auto &changed : {std::exchange(m_pointed, part), part}) {
        if (changed)
            update(zoneOf(*changed));
    }
    return true;
}

void PointableChart::showToolTip() {
    if (!m_pointed) {
        QToolTip::hideText();
        return;
    }
    const QRect zone = zoneOf(*m_pointed);
    const QPointF place = m_pointer.value_or(zone.center());
    QToolTip::showText(mapToGlobal(place).toPoint(), tipOf(*m_pointed), this, zone);
}

} // namespace burnwick
