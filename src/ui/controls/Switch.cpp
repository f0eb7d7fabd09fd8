// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/Switch.h"

#include "ui/theme/ThemeColors.h"

#include <QPainter>

#include <utility>

namespace burnwick {

namespace {

constexpr QSize trackSize{34, 20};
constexpr double knobMargin = 2;
constexpr int slideTime = 120; // milliseconds

} // namespace

Switch::Switch(std::function<bool()> reducedMotion)
    : m_reducedMotion(std::move(reducedMotion)) {
    setCheckable(true);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    m_slide.setDuration(slideTime);
    m_slide.setEasingCurve(QEasingCurve::InOutQuad);
    connect(&m_slide, &QVariantAnimation::valueChanged, this, [this](const QVariant &value) {
        m_position = value.toDouble();
        update();
    });
    connect(this, &QAbstractButton::toggled, this, [this](bool on) {
        slide(on);
        if (std::exchange(m_isOn, on) != on)
            Q_EMIT flipped(on);
    });
}

void Switch::setOn(bool on) {
    m_isOn = on;
    setChecked(on);
}

QSize Switch::sizeHint() const {
    return trackSize;
}

int Switch::radius() const {
    return trackSize.height() / 2;
}

void Switch::slide(bool on) {
    const double target = on ? 1 : 0;
    m_slide.stop();
    if (!isVisible() || m_reducedMotion()) {
        m_position = target;
        update();
        return;
    }
    m_slide.setStartValue(m_position);
    m_slide.setEndValue(target);
    m_slide.start();
}

void Switch::paintEvent(QPaintEvent *) {
    const ThemeColors &colors = colorsFor(*this);
    const QRectF track = rect();
    const double corner = track.height() / 2;
    QPainter painter(this);
    fillRounded(painter, track, corner, colors.switchOff);
    fillRounded(painter, track, corner, withOpacity(colors.accent, m_position));
    if (isDown())
        fillRounded(painter, track, corner, colors.pressed);

    const double diameter = track.height() - 2 * knobMargin;
    const double way = track.width() - 2 * knobMargin - diameter;
    const double fromStart = knobMargin + way * m_position;
    const double x = isRightToLeft() ? track.width() - diameter - fromStart : fromStart;
    const QRectF knob(x, knobMargin, diameter, diameter);
    constexpr double shadowDepth = 0.5;
    painter.setBrush(QColor(0, 0, 0, 40));
    painter.drawEllipse(knob.adjusted(-shadowDepth, 0, shadowDepth, 2 * shadowDepth));
    painter.setBrush(Qt::white);
    painter.drawEllipse(knob);
}

} // namespace burnwick
