// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "forms/TerminalStyle.h"
#include "model/Snapshot.h"

#include <string>

namespace burnwick {

/// Returns the figures as a table for people, at most 80 columns wide, with its last line feed. Omits the
/// account while its state and its limits are unknown. Remaining times and forecasts count from `now`.
[[nodiscard]] std::string tableForm(const Snapshot &snapshot, Instant now, TerminalColors colors);

} // namespace burnwick
