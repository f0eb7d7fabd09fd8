// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAccessible>

class QWidget;

namespace burnwick {

/// What assistive technology takes the widget for. Without a role a widget that draws itself is one that only
/// lays others out, and screen readers pass over it, whatever its name. To be called before the widget gets
/// its name, which may already be looked up; for widgets whose class is no standard control of Qt's.
void setAccessibleRole(QWidget &widget, QAccessible::Role role);

} // namespace burnwick
