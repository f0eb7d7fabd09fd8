// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/linux/secrets/SecretServiceTypes.h"

#include <QtDBus/QDBusArgument>
#include <QtDBus/QDBusMetaType>

namespace burnwick::secretservice {

QDBusArgument &operator<<(QDBusArgument &argument, const Secret &secret) {
    argument.beginStructure();
    argument << secret.session << secret.parameters << secret.value << secret.contentType;
    argument.endStructure();
    return argument;
}

const QDBusArgument &operator>>(const QDBusArgument &argument, Secret &secret) {
    argument.beginStructure();
    argument >> secret.session >> secret.parameters >> secret.value >> secret.contentType;
    argument.endStructure();
    return argument;
}

void registerTypes() {
    qDBusRegisterMetaType<Attributes>();
    qDBusRegisterMetaType<Secret>();
}

} // namespace burnwick::secretservice
