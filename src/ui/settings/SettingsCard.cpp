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
    : m_label(new TextLabel(label, TextStyle::label))
    , m_line(new QHBoxLayout) {
    constexpr int height = 38;
    setFixedHeight(height);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins({});
    column->setSpacing(0);
    column->addLayout(m_line, 1);
    m_line->setSpacing(4);
    m_label->setElidable();
    m_line->addWidget(m_label, 1);
    m_line->addWidget(control);
}

void SettingsRow::setLabel(const QString &label) {
    m_label->setText(label);
}

TextLabel *SettingsRow::addCaption(const QString &caption) {
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
    m_line->insertLayout(0, texts, 1);
    return second;
}

void SettingsRow::addWideCaption(const QString &caption) {
    constexpr int height = 64;
    setFixedHeight(height);
    auto *second = new TextLabel(caption, TextStyle::caption, QPalette::PlaceholderText);
    second->setElidable();
    auto *column = static_cast<QVBoxLayout *>(layout());
    column->setContentsMargins(0, 11, 0, 8);
    column->addWidget(second);
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
    if (!m_rows.isEmpty())
        m_rows.append(makeDivider());
    m_rows.append(row);
    for (QWidget *widget : m_rows.last(m_rows.size() > 1 ? 2 : 1))
        content()->addWidget(widget);
}

void SettingsCard::removeRows() {
    for (QWidget *widget : std::exchange(m_rows, {})) {
        content()->removeWidget(widget);
        widget->hide();
        widget->deleteLater();
    }
}

FlatButton::Look settingsButtonLook() {
    return {.padding = {8, 5},
            .radius = 7,
            .hovered = &ThemeColors::hover,
            .pressed = &ThemeColors::pressed,
            .outline = &ThemeColors::line};
}

} // namespace burnwick
