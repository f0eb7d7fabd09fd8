// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

#include <functional>
#include <optional>

namespace burnwick {

/// Connects to the bus at the address without blocking, and answers with a working connection of that name:
/// within the call where one exists already, otherwise later. Answers with nothing where the address is
/// empty, and where the bus refuses or is silent for `silentBusLimit` (see SessionBusAddress.h). The next
/// call tries again. Call it on the context's thread: the answer comes there, and is dropped once the context
/// is destroyed.
void connectToBus(QObject *context, const QString &address, const QString &name,
                  std::function<void(std::optional<QDBusConnection> bus)> answer);

} // namespace burnwick
