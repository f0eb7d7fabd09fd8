// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

namespace burnwick {

/// Logs Claude Code in. Run it in a login shell, whose profile contains the path of its installation.
inline constexpr const char *loginCommand = "claude auth login";

} // namespace burnwick
