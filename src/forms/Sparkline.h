// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "model/Instant.h"

#include <cstdint>
#include <map>
#include <string>

namespace burnwick {

/// One character per day for the `days` days up to today, as high as the day's count is beside the highest of
/// them; a day without any is a low dot. Empty when all of them are.
[[nodiscard]] std::string sparkline(const std::map<LocalDay, std::int64_t> &activity, LocalDay today,
                                    int days);

} // namespace burnwick
