// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <QString>

namespace burnwick::test {
class ScriptedServer;
}

namespace burnwick::demo {

/// The release that the appcast offers: one that is newer than this program.
[[nodiscard]] QString offeredVersion();

/// Has the server stand in for all that Burnwick talks to: 67 % of the 5-hour window used, which ends 2 hours
/// and 5 minutes after `now`, extra usage, a degraded API, and a newer release. Whatever a click opens in a
/// browser is a page that says that this is a demonstration.
void standIn(test::ScriptedServer &server, Instant now);

} // namespace burnwick::demo
