// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "platform/linux/bus/DBusStruct.h"

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtDBus/QDBusMetaType>
#include <QtDBus/QDBusObjectPath>

namespace burnwick::secretservice {

// QtDBus finds the operators by the types' namespace.
using burnwick::operator<<;
using burnwick::operator>>;

/// The attributes of an item, by which it is searched: a{ss}.
using Attributes = QMap<QString, QString>;

/// A secret in a message: (oayays).
struct Secret {
    QDBusObjectPath session;
    QByteArray parameters; ///< of the encryption; empty without one
    QByteArray value;
    QString contentType;

    static constexpr auto fields =
        std::tuple(&Secret::session, &Secret::parameters, &Secret::value, &Secret::contentType);
};

/// Registers the types with QtDBus. Call it before the first message that contains them.
inline void registerTypes() {
    qDBusRegisterMetaType<Attributes>();
    qDBusRegisterMetaType<Secret>();
}

} // namespace burnwick::secretservice
