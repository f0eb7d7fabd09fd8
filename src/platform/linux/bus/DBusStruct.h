// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtDBus/QDBusArgument>

#include <tuple>

namespace burnwick {

/// A type that is marshalled as a D-Bus struct: its static member `fields` is a tuple of pointers to its
/// members, in the order of the struct.
template <typename T>
concept DBusStruct = requires {
    T::fields;
};

template <DBusStruct T>
QDBusArgument &operator<<(QDBusArgument &argument, const T &value) {
    argument.beginStructure();
    std::apply([&](auto... field) { (argument << ... << (value.*field)); }, T::fields);
    argument.endStructure();
    return argument;
}

template <DBusStruct T>
const QDBusArgument &operator>>(const QDBusArgument &argument, T &value) {
    argument.beginStructure();
    std::apply([&](auto... field) { (argument >> ... >> (value.*field)); }, T::fields);
    argument.endStructure();
    return argument;
}

} // namespace burnwick
