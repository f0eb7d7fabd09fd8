// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsCard.h"

#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

namespace burnwick {

namespace {

class Divider final : public QWidget {
public:
    Divider() { setFixedHeight(1); }

protected:
    void paintEvent(QPaintEvent *) override { QPainter(this).fillRect(rect(), colorsFor(*this).line); }
};

} // namespace

QWidget *makeDivider() {
    return new Divider;
}

SettingsRow::SettingsRow(const QString &label, QWidget *control)
    : m_label(new TextLabel(label, TextStyle::label)) {
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

SettingsCard::SettingsCard() {
    content()->setContentsMargins(14, 2, 14, 2);
    content()->setSpacing(0);
}

void SettingsCard::addRow(SettingsRow *row) {
    if (content()->count() > 0)
        content()->addWidget(makeDivider());
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
