// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#include "platform/Platform.h"
#include "platform/linux/bus/SessionBusAddress.h"

#include <QtCore/QLoggingCategory>

namespace burnwick {

namespace {

Q_LOGGING_CATEGORY(busLog, "burnwick.bus")

} // namespace

/// Waits here, before there is a window: Qt's own parts ask the bus while the application object is made
/// (under Plasma, for one), and a connection that hangs keeps all the others of the process waiting.
void platform::disableUnresponsiveBus() {
    if (!isSilentBus(sessionBusAddress(), silentBusLimit))
        return;
    qCWarning(busLog, "The session bus does not answer and is done without until the next start: no status "
                      "item on it, no notifications, no knowledge of another instance");
    // For Qt, which reads it once, as for the programs that this one starts, which would hang as well.
    qputenv("DBUS_SESSION_BUS_ADDRESS", "disabled:");
}

} // namespace burnwick
