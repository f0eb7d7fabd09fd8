// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QCoroTask>

#include <QtCore/QByteArray>
#include <QtCore/QDeadlineTimer>
#include <QtCore/QString>

#include <optional>

/// The desktop's keyring, through the Secret Service on the session bus (org.freedesktop.secrets).
///
/// Does not start or unlock a keyring: a started one would be locked, and unlocking opens a dialog. Nothing
/// blocks or throws. Connecting to the bus ends as in connectToBus() (SessionBus.h), all calls after it by
/// the deadline. The coroutines use only their parameters.
namespace burnwick::secretservice {

/// The secret of an item, and the item's path.
struct ItemSecret {
    QByteArray value;
    QString item;
};

/// Returns the secret of the item whose attribute "service" has the value; absent when there is no bus or no
/// such item. Of several items, returns that of the one modified last; absent when that one is locked,
/// because the others are out of date.
[[nodiscard]] QCoro::Task<std::optional<ItemSecret>> readSecret(QString service, QDeadlineTimer deadline);

/// Replaces that item's secret, keeping its content type. Returns whether the keyring confirmed it.
[[nodiscard]] QCoro::Task<bool> replaceSecret(ItemSecret secret, QDeadlineTimer deadline);

} // namespace burnwick::secretservice
