// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

#include <chrono>

namespace burnwick {

/// Where the session bus is, in D-Bus's notation: $DBUS_SESSION_BUS_ADDRESS, or else $XDG_RUNTIME_DIR/bus.
/// Empty where there is neither; the D-Bus library would start a bus then.
[[nodiscard]] QString sessionBusAddress();

/// Whether the first socket of the address accepts a connection and then says nothing to a client's first
/// words until the limit. One that refuses, or is none, is not silent: nobody waits for that. Sockets of the
/// file system and of Linux's own namespace are tried, other addresses are not. Blocks. Safe from any thread.
[[nodiscard]] bool isSilentBus(const QString &address, std::chrono::milliseconds limit);

} // namespace burnwick
