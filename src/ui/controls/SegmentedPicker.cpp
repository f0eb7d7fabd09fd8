// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/SegmentedPicker.h"

#include "ui/controls/AccessibleRole.h"
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
        setAutoExclusive(true); // makes it a radio button for assistive technology
    }

protected:
    void paintEvent(QPaintEvent *event) override {
        if (isChecked()) {
            QPainter painter(this);
            // The shadow separates the segment from the track, which is light too in the light scheme.
            constexpr double shadowDepth = 1;
            const QRectF shape = QRectF(rect()).adjusted(0.5, 0, -0.5, -shadowDepth);
            fillRounded(painter, shape.adjusted(-0.5, 0.5, 0.5, shadowDepth), radius(), QColor(0, 0, 0, 36));
            fillRounded(painter, shape, radius(), colorsFor(*this).segment);
        }
        FlatButton::paintEvent(event);
    }
};

} // namespace

void stopAtChosen(QButtonGroup &group) {
    const auto update = [&group] {
        for (QAbstractButton *button : group.buttons())
            button->setFocusPolicy(button->isChecked() ? Qt::StrongFocus : Qt::ClickFocus);
    };
    QObject::connect(&group, &QButtonGroup::idToggled, &group, update);
    update();
}

SegmentedPicker::SegmentedPicker(const QStringList &labels)
    : m_segments(new QButtonGroup(this)) {
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
    // Not idClicked(), because assistive technology checks without a click.
    connect(m_segments, &QButtonGroup::idToggled, this, [this](int index, bool chosen) {
        if (chosen && std::exchange(m_chosen, index) != index)
            Q_EMIT picked(index);
    });
    setChosen(0);
    stopAtChosen(*m_segments);
}

void SegmentedPicker::setChosen(int index) {
    m_chosen = index;
    m_segments->button(index)->setChecked(true);
}

void SegmentedPicker::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    fillRounded(painter, rect(), trackRadius, colorsFor(*this).track);
}

} // namespace burnwick
