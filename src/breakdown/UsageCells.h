// SPDX-FileCopyrightText: 2026 The Burnwick developers
// SPDX-License-Identifier: MIT
#pragma once

#include "breakdown/BreakdownSums.h"
#include "model/UsageCell.h"

#include <vector>

namespace burnwick {

/// Returns the cells of all messages that count, by day, model and, if that is wanted, project; from that day
/// on, a cell for each message.
[[nodiscard]] std::vector<UsageCell> usageCells(const BreakdownSums &sums, bool byProject,
                                                std::chrono::sys_days singlySince);

} // namespace burnwick
