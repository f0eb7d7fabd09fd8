// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

class QWidget;

namespace burnwick {

/// Sets the widget's role for assistive technology. By default a widget that paints itself counts as a layout
/// container, which screen readers skip even if it has a name. Not for Qt's standard controls. Must precede
/// setAccessibleName(), which creates the accessible interface.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);

} // namespace burnwick
