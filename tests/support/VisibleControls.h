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
#include <string>

namespace burnwick::test {

/// Visits the visible objects of the accessible tree in reading order until a visit returns false.
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

/// Returns the texts of that kind of all visible objects.
inline QStringList textsIn(QWidget &window, QAccessible::Text kind) {
    QStringList texts;
    visitAccessible(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface &object) {
        texts << object.text(kind);
        return true;
    });
    return texts;
}

inline QStringList namesIn(QWidget &window) {
    return textsIn(window, QAccessible::Name);
}

/// Returns the names that screen readers skip because the role of the object is unset.
inline QStringList namesWithoutRole(QWidget &window) {
    QStringList names;
    visitAccessible(QAccessible::queryAccessibleInterface(&window), [&names](QAccessibleInterface &object) {
        if (object.role() == QAccessible::Client && !object.text(QAccessible::Name).isEmpty())
            names << object.text(QAccessible::Name);
        return true;
    });
    return names;
}

/// Returns the first visible object with that role and name, or null.
inline QAccessibleInterface *findIn(QWidget &window, QAccessible::Role role, const char *name) {
    QAccessibleInterface *found = nullptr;
    visitAccessible(QAccessible::queryAccessibleInterface(&window), [&](QAccessibleInterface &object) {
        if (object.role() == role && object.text(QAccessible::Name) == QString::fromUtf8(name))
            found = &object;
        return found == nullptr;
    });
    return found;
}

/// Runs the object's first action, as assistive technology does; throws without such a visible object.
inline void press(QWidget &window, QAccessible::Role role, const char *name) {
    QAccessibleInterface *object = findIn(window, role, name);
    if (object == nullptr)
        throw std::logic_error(std::string("no such control: ") + name);
    const QString action = object->actionInterface()->actionNames().first();
    QSignalSpy clicked(qobject_cast<QAbstractButton *>(object->object()), &QAbstractButton::clicked);
    object->actionInterface()->doAction(action);
    // Qt releases the button after a short time.
    if (action == QAccessibleActionInterface::pressAction() && clicked.isEmpty())
        clicked.wait();
}

} // namespace burnwick::test
