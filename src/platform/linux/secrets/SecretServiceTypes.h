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

// For QtDBus, which looks them up beside the types.
using burnwick::operator<<;
using burnwick::operator>>;

/// What items are found by: a{ss}.
using Attributes = QMap<QString, QString>;

/// A secret as it travels: (oayays).
struct Secret {
    QDBusObjectPath session;
    QByteArray parameters; ///< of the encryption; empty without one
    QByteArray value;
    QString contentType;

    static constexpr auto fields =
        std::tuple(&Secret::session, &Secret::parameters, &Secret::value, &Secret::contentType);
};

/// Makes them known to QtDBus. Call it before the first call that carries them.
inline void registerTypes() {
    qDBusRegisterMetaType<Attributes>();
    qDBusRegisterMetaType<Secret>();
}

} // namespace burnwick::secretservice
