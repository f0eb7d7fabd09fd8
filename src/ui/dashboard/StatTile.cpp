// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/StatTile.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/text/Text.h"
#include "ui/text/TextLabel.h"
#include "ui/theme/ThemeColors.h"

#include <QPainter>
#include <QVBoxLayout>

namespace burnwick {

StatTile::StatTile(const QString &label, Qt::Edges outer)
    : m_outer(outer)
    , m_label(label)
    , m_value(new TextLabel(TextStyle::figure)) {
    constexpr int sidePadding = 14;
    setAccessibleRole(*this, QAccessible::Grouping);
    m_value->setElidable();
    setMinimumWidth(sidePadding);

    auto *caption = new TextLabel(label, TextStyle::caption, QPalette::PlaceholderText);
    caption->setElidable();
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(sidePadding, 0, sidePadding, 0);
    column->setSpacing(4);
    column->addStretch();
    column->addWidget(caption);
    column->addWidget(m_value);
    column->addStretch();
}

void StatTile::setValue(const QString &value) {
    if (m_value->text() == value && !value.isEmpty())
        return;
    m_value->setText(value);
    setAccessibleName(m_label + QLatin1String(": ") + value);
}

void StatTile::setNote(const QString &note) {
    if (accessibleDescription() != note)
        setPlainToolTip(*this, note);
}

void StatTile::paintEvent(QPaintEvent *) {
    constexpr int radius = 12;
    // The shape exceeds the tile at inner edges, where the widget clips its round corners.
    const auto excess = [this](Qt::Edge edge) { return m_outer.testFlag(edge) ? 0 : radius; };
    const QRect shape = rect().adjusted(-excess(Qt::LeftEdge), -excess(Qt::TopEdge), excess(Qt::RightEdge),
                                        excess(Qt::BottomEdge));
    QPainter painter(this);
    fillRounded(painter, shape, radius, colorsFor(*this).card);
}

} // namespace burnwick
