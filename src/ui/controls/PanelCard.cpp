// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/PanelCard.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/text/TextLabel.h"
#include "ui/theme/ThemeColors.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace burnwick {

PanelCard::PanelCard()
    : m_content(new QVBoxLayout(this)) {
    PanelCard::setDense(false);
}

PanelCard::PanelCard(const QString &caption)
    : PanelCard() {
    setAccessibleRole(*this, QAccessible::Grouping);
    setAccessibleName(caption);
    m_header = new QHBoxLayout;
    m_header->setSpacing(8);
    m_header->addWidget(new TextLabel(caption, TextStyle::sectionCaption, QPalette::PlaceholderText));
    m_header->addStretch();
    m_content->addLayout(m_header);
}

void PanelCard::setDense(bool dense) {
    const int padding = dense ? 10 : 14;
    m_content->setContentsMargins(16, padding, 16, padding);
    m_content->setSpacing(dense ? 4 : 8);
}

void PanelCard::paintEvent(QPaintEvent *) {
    constexpr double radius = 12;
    QPainter painter(this);
    fillRounded(painter, rect(), radius, colorsFor(*this).card);
}

} // namespace burnwick
