// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

#include <chrono>
#include <optional>

/// The desktop's keyring, through the Secret Service on the session bus (org.freedesktop.secrets).
///
/// Only a keyring that runs already and is unlocked is asked: starting one would start it locked, and
/// unlocking one opens a dialog. Of several items with the attribute the one modified last counts. Nothing
/// blocks, nothing throws, and each call ends within `limit` as long as the event loop runs. The coroutines
/// use nothing but their parameters.
namespace burnwick::secretservice {

/// The secret of the item whose attribute "service" has the value; absent when it cannot be had.
[[nodiscard]] QCoro::Task<std::optional<QByteArray>> readSecret(QDBusConnection bus, QString service,
                                                                std::chrono::milliseconds limit);

/// Gives that item another secret. Whether the keyring said that it has it now.
[[nodiscard]] QCoro::Task<bool> replaceSecret(QDBusConnection bus, QString service, QByteArray secret,
                                              std::chrono::milliseconds limit);

} // namespace burnwick::secretservice
