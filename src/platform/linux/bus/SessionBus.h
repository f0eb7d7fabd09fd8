// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QFuture>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

#include <chrono>
#include <optional>

namespace burnwick {

/// Returns the session bus's address in D-Bus's notation: $DBUS_SESSION_BUS_ADDRESS, or else the existing
/// socket $XDG_RUNTIME_DIR/bus. Empty without both; the D-Bus library would start a bus then.
[[nodiscard]] QString sessionBusAddress();

/// Returns whether the bus accepts a connection and then does not reply to the client's authentication or
/// first message within `limit`. A bus that rejects the connection, or does not exist, is not silent. Blocks
/// until the reply, usually a few milliseconds, or until `limit`. Safe from any thread.
[[nodiscard]] bool isSilentBus(const QString &address, std::chrono::milliseconds limit);

/// The limit of this program's calls of isSilentBus().
inline constexpr std::chrono::seconds silentBusLimit{2};

/// Disables the session bus for this process when the bus does not respond: calls would block for long or
/// without limit. Takes a few milliseconds, or `silentBusLimit` when the bus does not respond. Call it before
/// the application object exists, and before this process uses any of the desktop's services.
void disableUnresponsiveBus();

/// Returns a working connection of that name: the present one at once, or a new one, which is made on another
/// thread. Absent when the address is empty, and when the bus rejects the connection or is silent for
/// `silentBusLimit`; the next call tries again.
[[nodiscard]] QFuture<std::optional<QDBusConnection>> connectToBus(const QString &address,
                                                                   const QString &name);

} // namespace burnwick
