// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusPendingCall>

namespace burnwick {

/// Calls a method of the message bus itself (org.freedesktop.DBus) without waiting. QtDBus's own calls for
/// the same purposes wait for the answer.
[[nodiscard]] QDBusPendingCall callMessageBus(const QDBusConnection &connection, const QString &method,
                                              const QVariantList &arguments);

} // namespace burnwick
