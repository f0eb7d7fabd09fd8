// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/StatTile.h"

#include <QFontMetrics>
#include <QLabel>
#include <QVBoxLayout>

namespace burnwick {

namespace {

constexpr int tileHeight = 92;
constexpr int labelPixelSize = 11;
constexpr int valuePixelSize = 18;

QLabel *makeLabel(int pixelSize, int weight, QWidget *parent) {
    auto *label = new QLabel(parent);
    label->setTextFormat(Qt::PlainText);
    QFont font = label->font();
    font.setPixelSize(pixelSize);
    font.setWeight(static_cast<QFont::Weight>(weight));
    label->setFont(font);
    return label;
}

} // namespace

StatTile::StatTile(const QString &label, QWidget *parent)
    : QFrame(parent)
    , m_label(label)
    , m_valueLabel(makeLabel(valuePixelSize, QFont::DemiBold, this)) {
    setFixedHeight(tileHeight);
    setMinimumWidth(120);
    setAutoFillBackground(true);
    setBackgroundRole(QPalette::Base);
    // The value may be longer than the tile is wide; it is elided, not given the room.
    m_valueLabel->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);

    QLabel *caption = makeLabel(labelPixelSize, QFont::Normal, this);
    caption->setText(label);
    caption->setForegroundRole(QPalette::PlaceholderText);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(14, 0, 14, 0);
    column->setSpacing(4);
    column->addStretch();
    column->addWidget(caption);
    column->addWidget(m_valueLabel);
    column->addStretch();
}

void StatTile::setValue(const QString &value) {
    if (m_value == value && !m_valueLabel->text().isEmpty())
        return;
    m_value = value;
    setAccessibleName(m_label + QLatin1String(": ") + value);
    showElided();
}

void StatTile::resizeEvent(QResizeEvent *event) {
    QFrame::resizeEvent(event);
    showElided();
}

void StatTile::showElided() {
    const QString shown =
        m_valueLabel->fontMetrics().elidedText(m_value, Qt::ElideMiddle, contentsRect().width() - 28);
    m_valueLabel->setText(shown);
    m_valueLabel->setToolTip(shown == m_value ? QString() : m_value.toHtmlEscaped());
}

} // namespace burnwick
