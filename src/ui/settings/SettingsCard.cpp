// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsCard.h"

#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace burnwick {

SettingsDivider::SettingsDivider(QWidget *parent)
    : QWidget(parent) {
    setFixedHeight(1);
}

void SettingsDivider::paintEvent(QPaintEvent *) {
    QPainter(this).fillRect(rect(), colorsFor(*this).line);
}

SettingsRow::SettingsRow(const QString &label, QWidget *control, QWidget *parent)
    : QWidget(parent)
    , m_label(new TextLabel(label, TextStyle::label)) {
    constexpr int height = 38;
    setFixedHeight(height);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins({});
    line->setSpacing(4);
    m_label->setElidable();
    line->addWidget(m_label, 1);
    line->addWidget(control);
}

void SettingsRow::setLabel(const QString &label) {
    m_label->setText(label);
}

SettingsCard::SettingsCard(QWidget *parent)
    : PanelCard(parent) {
    content()->setContentsMargins(14, 2, 14, 2);
    content()->setSpacing(0);
}

void SettingsCard::addRow(SettingsRow *row) {
    if (content()->count() > 0)
        content()->addWidget(new SettingsDivider);
    content()->addWidget(row);
}

FlatButton::Look settingsButtonLook() {
    return {.padding = {8, 5},
            .radius = 7,
            .hovered = &ThemeColors::hover,
            .pressed = &ThemeColors::pressed,
            .outline = &ThemeColors::line};
}

} // namespace burnwick
