// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <QtCore/QString>

#include <chrono>

namespace burnwick {

/// Where the session bus is, in D-Bus's notation: $DBUS_SESSION_BUS_ADDRESS, or else $XDG_RUNTIME_DIR/bus.
/// Empty where there is neither; the D-Bus library would start a bus then.
[[nodiscard]] QString sessionBusAddress();

/// Whether the bus accepts a connection and then leaves it without an answer until the limit, to the client's
/// authentication or to its first message. A bus that refuses, or does not exist, is not silent. A bus that
/// answers costs a few milliseconds. Blocks. Safe from any thread.
[[nodiscard]] bool isSilentBus(const QString &address, std::chrono::milliseconds limit);

/// How long this process waits for a bus before it does without.
inline constexpr std::chrono::seconds silentBusLimit{2};

} // namespace burnwick
