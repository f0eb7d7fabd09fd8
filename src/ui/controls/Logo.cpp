// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/Logo.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/controls/SvgIcon.h"

#include <QPainter>

namespace burnwick {

Logo::Logo(int side, QWidget *parent)
    : QWidget(parent)
    , m_icon(applicationIcon()) {
    setFixedSize(side, side);
    setAccessibleRole(*this, QAccessible::Graphic);
    setAccessibleName(QStringLiteral("Burnwick"));
}

void Logo::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    m_icon.paint(&painter, rect());
}

} // namespace burnwick
