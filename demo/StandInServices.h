// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"
#include "model/Limit.h"

#include <QString>

#include <vector>

namespace burnwick::test {
class ScriptedServer;
}

namespace burnwick::demo {

/// The appcast's newest release, newer than this program.
[[nodiscard]] QString offeredVersion();

/// Returns the account's limits as the usage endpoint reports them at that time.
[[nodiscard]] std::vector<Limit> limitsAt(Instant now);

/// Scripts the server as all of Burnwick's services: 67 % of the 5-hour window are used, which resets 2 hours
/// and 5 minutes after `now`; there are extra usage, a degraded API and a newer release. Each page for the
/// browser states that this is a demonstration.
void standIn(test::ScriptedServer &server, Instant now);

} // namespace burnwick::demo
