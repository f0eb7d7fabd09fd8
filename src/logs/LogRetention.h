// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>

namespace burnwick {

/// Returns the days after which Claude Code deletes logs that were not modified: "cleanupPeriodDays" of
/// ".claude/settings.json" in the home directory, or 30 if it is missing or not a positive integer, or the
/// file cannot be read. Never writes. Safe from any thread.
[[nodiscard]] int daysUntilCleanup(const std::filesystem::path &home);

} // namespace burnwick
