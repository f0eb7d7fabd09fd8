// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "ui/controls/AccessibleRole.h"

#include <QAccessibleWidget>
#include <QVariant>
#include <QWidget>

namespace burnwick {

namespace {

constexpr const char *roleProperty = "_burnwick_accessibleRole";

QAccessibleInterface *interfaceWithRole(const QString &, QObject *object) {
    const QVariant role = object->property(roleProperty);
    if (!role.isValid() || !object->isWidgetType())
        return nullptr;
    return new QAccessibleWidget(static_cast<QWidget *>(object),
                                 static_cast<QAccessible::Role>(role.toInt()));
}

} // namespace

void setAccessibleRole(QWidget &widget, QAccessible::Role role) {
    // Installing the same function again has no effect.
    QAccessible::installFactory(&interfaceWithRole);
    widget.setProperty(roleProperty, static_cast<int>(role));
}

} // namespace burnwick
