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
/// Only a running, unlocked keyring is asked: a started one would be locked, and unlocking opens a dialog.
/// Nothing blocks or throws. Once connected, each call ends by the deadline; a silent bus fails after
/// `silentBusLimit` (SessionBus.h). The coroutines use only their parameters.
namespace burnwick::secretservice {

/// The secret of an item, and the item's path.
struct ItemSecret {
    QByteArray value;
    QString item;
};

/// Returns the secret of the item whose attribute "service" has the value; absent when there is no bus or the
/// keyring does not provide it. Of several items the one modified last counts: when that one is locked, the
/// others are out of date.
[[nodiscard]] QCoro::Task<std::optional<ItemSecret>> readSecret(QString service, QDeadlineTimer deadline);

/// Replaces that item's secret, keeping its content type. Returns whether the keyring confirmed it.
[[nodiscard]] QCoro::Task<bool> replaceSecret(ItemSecret secret, QDeadlineTimer deadline);

} // namespace burnwick::secretservice
