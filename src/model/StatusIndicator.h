// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/QuotaData.h"

#include <optional>

namespace burnwick {

/// How close the usage of the 5-hour window is to its limit.
enum class StatusIndicator { green, orange, red };

/// Green below 41 %, orange from 41 %, red from 81 %.
[[nodiscard]] StatusIndicator statusIndicatorForUsage(double usagePct) noexcept;

/// Of the 5-hour window; green without a snapshot.
[[nodiscard]] StatusIndicator statusIndicatorFor(const std::optional<QuotaData> &quota) noexcept;

} // namespace burnwick
