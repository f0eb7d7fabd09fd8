// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusPendingCall>

#include <chrono>

namespace burnwick {

/// Calls a method of the message bus itself (org.freedesktop.DBus) without waiting. QtDBus's own calls for
/// the same purposes wait for the answer. Without an answer within `limit` the call ends with an error.
[[nodiscard]] QDBusPendingCall callMessageBus(const QDBusConnection &connection, const QString &method,
                                              const QVariantList &arguments,
                                              std::chrono::milliseconds limit = std::chrono::seconds(25));

} // namespace burnwick
