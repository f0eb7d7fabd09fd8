// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/layout/PixelGrid.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace burnwick {

PixelGrid::PixelGrid(const QPainter &painter)
    : m_toDevice(painter.deviceTransform()) {}

double PixelGrid::x(double value) const {
    return (std::round(value * m_toDevice.m11() + m_toDevice.dx()) - m_toDevice.dx()) / m_toDevice.m11();
}

double PixelGrid::y(double value) const {
    return (std::round(value * m_toDevice.m22() + m_toDevice.dy()) - m_toDevice.dy()) / m_toDevice.m22();
}

double PixelGrid::length(double value) const {
    constexpr double roundingError = 1e-6;
    return std::max(1.0, std::floor(value * m_toDevice.m11() + roundingError)) / m_toDevice.m11();
}

QRectF PixelGrid::rect(const QRectF &value) const {
    return {x(value.left()), y(value.top()), length(value.width()), length(value.height())};
}

} // namespace burnwick
