// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/settings/SettingsCard.h"

#include "ui/text/TextLabel.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QVBoxLayout>

#include <utility>

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

void SettingsRow::addCaption(const QString &caption) {
    constexpr int height = 56;
    setFixedHeight(height);
    auto *second = new TextLabel(caption, TextStyle::caption, QPalette::PlaceholderText);
    second->setElidable();
    auto *texts = new QVBoxLayout;
    texts->setSpacing(1);
    texts->addStretch();
    texts->addWidget(m_label);
    texts->addWidget(second);
    texts->addStretch();
    static_cast<QHBoxLayout *>(layout())->insertLayout(0, texts, 1);
}

SettingsCard::SettingsCard(const QString &title) {
    content()->setContentsMargins(14, 2, 14, 2);
    content()->setSpacing(0);
    if (title.isEmpty())
        return;
    constexpr int height = 25;
    auto *line = new TextLabel(title, TextStyle::captionStrong, QPalette::PlaceholderText);
    line->setFixedHeight(height);
    line->setContentsMargins(0, 5, 0, 0);
    content()->addWidget(line);
}

void SettingsCard::addRow(SettingsRow *row) {
    if (std::exchange(m_hasRows, true))
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
