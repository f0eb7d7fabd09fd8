// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/SessionBusAddress.h"

#include <QtCore/QLoggingCategory>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(busLog, "burnwick.bus")

} // namespace

/// Waits here, before there is a window: Qt's own parts ask the bus while the application object is made
/// (under Plasma, for one), and a connection that hangs keeps all the others of the process waiting.
/// Whoever has a bus that works is not held up by this for a millisecond.
void platform::forgoSilentServices() {
    constexpr std::chrono::seconds patience{2};
    if (!isSilentBus(sessionBusAddress(), patience))
        return;
    qCWarning(busLog, "The session bus does not answer and is done without until the next start: no status "
                      "item on it, no notifications, no knowledge of another instance");
    // For Qt, which reads it once, as for the programs that this one starts, which would hang as well.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

} // namespace burnwick
