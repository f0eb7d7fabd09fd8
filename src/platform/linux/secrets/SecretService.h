// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>

#include <QtCore/QByteArray>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

#include <optional>

/// The desktop's keyring, through the Secret Service on the session bus (org.freedesktop.secrets).
///
/// Only a keyring that runs already and is unlocked is asked: starting one would start it locked, and
/// unlocking one opens a dialog. Nothing blocks, nothing throws, and each call ends by the deadline as long
/// as the event loop runs. The coroutines use nothing but their parameters.
namespace burnwick::secretservice {

/// The secret of an item, and the item's path.
struct ItemSecret {
    QByteArray value;
    QString item;
};

/// The secret of the item whose attribute "service" has the value; absent when it cannot be had. Of several
/// items the one modified last counts: when that one is locked, the others are out of date.
[[nodiscard]] QCoro::Task<std::optional<ItemSecret>> readSecret(QDBusConnection bus, QString service,
                                                                QDeadlineTimer deadline);

/// Gives that item another secret of the same content type. Whether the keyring said that it has it now.
[[nodiscard]] QCoro::Task<bool> replaceSecret(QDBusConnection bus, ItemSecret secret,
                                              QDeadlineTimer deadline);

} // namespace burnwick::secretservice
