// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/dashboard/DashboardButtons.h"

namespace burnwick {

namespace {

FlatButton::Look choiceLook(TextStyle text, TextStyle chosenText, QSize padding, int radius) {
    return {.text = text,
            .chosenText = chosenText,
            .padding = padding,
            .radius = radius,
            .hovered = &ThemeColors::hover,
            .chosen = &ThemeColors::selected,
            .restingText = &ThemeColors::inactive};
}

} // namespace

TabButton::TabButton(const QString &label, QWidget *parent)
    : FlatButton(label, choiceLook(TextStyle::label, TextStyle::labelStrong, {14, 6}, 8), parent) {
    setCheckable(true);
    setAutoExclusive(true); // assistive technology then takes it for one of several choices
}

FilterButton::FilterButton(const QString &label, QWidget *parent)
    : FlatButton(label, choiceLook(TextStyle::body, TextStyle::bodyStrong, {10, 5}, 6), parent) {
    setCheckable(true);
    setAutoExclusive(true);
}

FlatButton::Look smallButtonStyle() {
    return {.text = TextStyle::caption,
            .padding = {8, 4},
            .ground = &ThemeColors::hover,
            .hovered = &ThemeColors::selected,
            .pressed = &ThemeColors::pressed};
}

} // namespace burnwick
