// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QAbstractButton>
#include <QAccessible>
#include <QSignalSpy>
#include <QStringList>
#include <QWidget>

#include <functional>
#include <stdexcept>

namespace burnwick::test {

/// Calls back with all that assistive technology finds visible in the window, in reading order; until false.
inline bool visitAccessible(QAccessibleInterface *object,
                            const std::function<bool(QAccessibleInterface &)> &visit) {
    if (object == nullptr || object->state().invisible)
        return true;
    if (!visit(*object))
        return false;
    for (int i = 0; i < object->childCount(); ++i)
        if (!visitAccessible(object->child(i), visit))
            return false;
    return true;
}

inline QStringList namesIn(QWidget &window) {
    QStringList names;
    visitAccessible(QAccessible::queryAccessibleInterface(&window), [&names](QAccessibleInterface &object) {
        names << object.text(QAccessible::Name);
        return true;
    });
    return names;
}

/// What assistive technology says about the controls, beside their names.
inline QStringList descriptionsIn(QWidget &window) {
    QStringList descriptions;
    visitAccessible(QAccessible::queryAccessibleInterface(&window),
                    [&descriptions](QAccessibleInterface &object) {
                        descriptions << object.text(QAccessible::Description);
                        return true;
                    });
    return descriptions;
}

/// The names that screen readers pass over, because what bears them only lays others out.
inline QStringList namesWithoutRole(QWidget &window) {
    QStringList names;
    visitAccessible(QAccessible::queryAccessibleInterface(&window), [&names](QAccessibleInterface &object) {
        if (object.role() == QAccessible::Client && !object.text(QAccessible::Name).isEmpty())
            names << object.text(QAccessible::Name);
        return true;
    });
    return names;
}

/// The first one of that role and name; none when nothing of the kind is visible.
inline QAccessibleInterface *findIn(QWidget &window, QAccessible::Role role, const QString &name) {
    QAccessibleInterface *found = nullptr;
    visitAccessible(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface &object) {
        if (object.role() == role && object.text(QAccessible::Name) == name)
            found = &object;
        return found == nullptr;
    });
    return found;
}

/// Does what a click on it would; throws when nothing of the kind is visible.
inline void press(QWidget &window, QAccessible::Role role, const QString &name) {
    QAccessibleInterface *object = findIn(window, role, name);
    if (object == nullptr)
        throw std::logic_error("no such control: " + name.toStdString());
    const QString action = object->actionInterface()->actionNames().first();
    QSignalSpy clicked(qobject_cast<QAbstractButton *>(object->object()), &QAbstractButton::clicked);
    object->actionInterface()->doAction(action);
    // Qt holds the button down for a moment.
    if (action == QAccessibleActionInterface::pressAction() && clicked.isEmpty())
        clicked.wait();
}

} // namespace burnwick::test
