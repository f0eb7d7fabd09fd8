// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtCore/QVariantList>
#include <QtDBus/QDBusConnection>
#include <QtDBus/QDBusMessage>
#include <QtDBus/QDBusPendingCall>

#include <chrono>
#include <functional>

namespace burnwick {

/// Calls a method of the message bus itself (org.freedesktop.DBus). Does not block, unlike QtDBus's functions
/// for the same methods. The call ends with an error when there is no reply within `limit`.
[[nodiscard]] QDBusPendingCall callMessageBus(const QDBusConnection &connection, const QString &method,
                                              const QVariantList &arguments,
                                              std::chrono::milliseconds limit = std::chrono::seconds(25));

/// Calls the handler once with the reply or the error, after this function returned, on the context's thread;
/// not after the context is destroyed.
void whenFinished(const QDBusPendingCall &call, QObject *context,
                  std::function<void(const QDBusMessage &replyOrError)> handler);

} // namespace burnwick
