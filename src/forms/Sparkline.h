// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <cstdint>
#include <map>
#include <string>

namespace burnwick {

/// One character for each of the `days` days up to today, with a height proportional to the day's count; a
/// low dot for a day without activity. Empty without any activity.
[[nodiscard]] std::string sparkline(const std::map<LocalDay, std::int64_t> &activity, LocalDay today,
                                    int days);

} // namespace burnwick
