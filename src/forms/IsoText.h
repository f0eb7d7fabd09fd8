// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <optional>
#include <string>

/// Dates for programs, as in ISO 8601.
namespace burnwick {

/// Returns "2026-01-31".
[[nodiscard]] std::string isoDate(LocalDay day);

/// Returns "2026-01-31T12:00:00.000Z"; null without an instant.
[[nodiscard]] std::optional<std::string> isoInstant(const std::optional<Instant> &instant);

} // namespace burnwick
