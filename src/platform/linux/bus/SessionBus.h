// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QFuture>
#include <QtCore/QString>
#include <QtDBus/QDBusConnection>

#include <chrono>
#include <optional>

namespace burnwick {

/// Returns the session bus's address in D-Bus's notation: $DBUS_SESSION_BUS_ADDRESS, or else
/// $XDG_RUNTIME_DIR/bus. Empty where there is neither; the D-Bus library would start a bus then.
[[nodiscard]] QString sessionBusAddress();

/// Returns whether the bus accepts a connection and then leaves the client's authentication or its first
/// message without a reply until the limit. A bus that refuses, or is missing, is not silent. A bus that
/// replies costs a few milliseconds. Blocks. Safe from any thread.
[[nodiscard]] bool isSilentBus(const QString &address, std::chrono::milliseconds limit);

/// How long this process waits for a bus before it does without.
inline constexpr std::chrono::seconds silentBusLimit{2};

/// Connects to the bus on another thread. The result is a working connection of that name, at once where it
/// exists already; absent where the address is empty, the bus refuses, or it is silent for `silentBusLimit`.
/// The next call tries again.
[[nodiscard]] QFuture<std::optional<QDBusConnection>> connectToBus(const QString &address,
                                                                   const QString &name);

} // namespace burnwick
