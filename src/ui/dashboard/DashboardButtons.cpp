// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/DashboardButtons.h"

namespace burnwick {

namespace {

FlatButton::Look choiceLook(TextStyle text, QSize padding, int radius) {
    FlatButton::Look look;
    look.text = text;
    look.padding = padding;
    look.radius = radius;
    look.hovered = &ThemeColors::hover;
    look.chosen = &ThemeColors::selected;
    look.restingText = &ThemeColors::inactive;
    return look;
}

} // namespace

TabButton::TabButton(const QString &label, QWidget *parent)
    : FlatButton(label, choiceLook(TextStyle::label, {14, 6}, 8), parent) {
    setCheckable(true);
    setAutoExclusive(true); // assistive technology then takes it for one of several choices
}

FilterButton::FilterButton(const QString &label, QWidget *parent)
    : FlatButton(label, choiceLook(TextStyle::body, {10, 5}, 6), parent) {
    setCheckable(true);
    setAutoExclusive(true);
}

FlatButton::Look smallButtonStyle() {
    FlatButton::Look look;
    look.text = TextStyle::caption;
    look.padding = {8, 4};
    look.radius = 6;
    look.ground = &ThemeColors::hover;
    look.hovered = &ThemeColors::selected;
    look.pressed = &ThemeColors::pressed;
    return look;
}

} // namespace burnwick
