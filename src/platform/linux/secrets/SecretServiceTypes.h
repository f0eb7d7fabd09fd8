// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QMap>
#include <QtCore/QMetaType>
#include <QtCore/QString>
#include <QtDBus/QDBusObjectPath>

class QDBusArgument;

namespace burnwick::secretservice {

/// What items are found by: a{ss}.
using Attributes = QMap<QString, QString>;

/// A secret on its way: (oayays).
struct Secret {
    QDBusObjectPath session;
    QByteArray parameters; ///< of the encryption; empty when there is none
    QByteArray value;
    QString contentType;
};

QDBusArgument &operator<<(QDBusArgument &argument, const Secret &secret);
const QDBusArgument &operator>>(const QDBusArgument &argument, Secret &secret);

/// Makes them known to QtDBus; before the first call that carries them.
void registerTypes();

} // namespace burnwick::secretservice

Q_DECLARE_METATYPE(burnwick::secretservice::Secret)
