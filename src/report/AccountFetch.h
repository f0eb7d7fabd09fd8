// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Snapshot.h"
#include "platform/SecretStore.h"

namespace burnwick {

class Clock;
class UserDefaults;

/// Requests the quota and the service status once, concurrently, with the login in one of those folders
/// and the addresses in the settings. Renews an expired token and stores it; signals do not end the
/// program during that.
///
/// Blocks until both requests have ended: 10 seconds at most for each exchange, of which a quota takes up to
/// four. Never throws. Main thread only; creates the application object for the duration of the call.
[[nodiscard]] AccountFigures fetchAccount(ConfigurationFolders configurationFolders, UserDefaults &defaults,
                                          const Clock &clock, const Calendar &calendar);

} // namespace burnwick
