// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/SegmentedPicker.h"

#include "ui/controls/AccessibleRole.h"
#include "ui/controls/ChoiceGroup.h"
#include "ui/controls/FlatButton.h"

#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPainter>

#include <utility>

namespace burnwick {

namespace {

constexpr int trackRadius = 8;
constexpr int trackMargin = 2;

FlatButton::Look segmentLook() {
    FlatButton::Look look;
    look.text = TextStyle::bodyStrong;
    look.padding = {14, 4};
    look.radius = trackRadius - trackMargin;
    look.hovered = &ThemeColors::hover;
    look.restingText = &ThemeColors::secondary;
    return look;
}

class Segment final : public FlatButton {
public:
    explicit Segment(const QString &label)
        : FlatButton(label, segmentLook()) {
        setCheckable(true);
        // Radio buttons are what this makes of them for assistive technology.
        setAutoExclusive(true);
    }

protected:
    void paintEvent(QPaintEvent *event) override {
        if (isChecked()) {
            QPainter painter(this);
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setPen(Qt::NoPen);
            // A hint of a shadow lifts it off the track where both are light.
            constexpr double shadowDepth = 1;
            const QRectF shape = QRectF(rect()).adjusted(0.5, 0, -0.5, -shadowDepth);
            painter.setBrush(QColor(0, 0, 0, 36));
            painter.drawRoundedRect(shape.adjusted(-0.5, 0.5, 0.5, shadowDepth), radius(), radius());
            painter.setBrush(colorsFor(*this).segment);
            painter.drawRoundedRect(shape, radius(), radius());
        }
        FlatButton::paintEvent(event);
    }
};

} // namespace

SegmentedPicker::SegmentedPicker(const QStringList &labels, QWidget *parent)
    : QWidget(parent)
    , m_segments(new QButtonGroup(this)) {
    setAccessibleRole(*this, QAccessible::Grouping);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *line = new QHBoxLayout(this);
    line->setContentsMargins(trackMargin, trackMargin, trackMargin, trackMargin);
    line->setSpacing(0);
    for (const QString &label : labels) {
        auto *segment = new Segment(label);
        m_segments->addButton(segment, static_cast<int>(m_segments->buttons().size()));
        line->addWidget(segment);
    }
    // Not idClicked(): assistive technology chooses without a click.
    connect(m_segments, &QButtonGroup::idToggled, this, [this](int index, bool chosen) {
        if (chosen)
            follow(index);
    });
    setChosen(0);
    stopAtChosen(*m_segments);
}

void SegmentedPicker::setChosen(int index) {
    m_chosen = index;
    m_segments->button(index)->setChecked(true);
}

void SegmentedPicker::follow(int index) {
    if (std::exchange(m_chosen, index) != index)
        Q_EMIT picked(index);
}

void SegmentedPicker::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(colorsFor(*this).track);
    painter.drawRoundedRect(rect(), trackRadius, trackRadius);
}

} // namespace burnwick
